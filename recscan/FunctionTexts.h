#pragma once

#include <array>

/// What a page address can stand for: a function's key, and the sentence that recommends it, untranslated, in
/// the context QObject.
struct FunctionText
{
    const char* key;
    const char* text;
};

/// The functions that this library carries out itself.
extern const std::array<FunctionText, 15> kOwnFunctions;

/// The functions that are left to the agent. No key is in both tables.
extern const std::array<FunctionText, 27> kAgentFunctions;
