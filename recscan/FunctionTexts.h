#pragma once

#include <array>

/// A function that a page address can refer to: its key and the sentence that recommends it. The sentence is
/// untranslated, in the context QObject.
struct FunctionText
{
    const char* key;
    const char* text;
};

/// Functions that this library carries out itself.
extern const std::array<FunctionText, 15> kOwnFunctions;

/// Functions that the agent carries out. The two tables have disjoint keys.
extern const std::array<FunctionText, 27> kAgentFunctions;
