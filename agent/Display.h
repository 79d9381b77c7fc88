#pragma once

#include <string>

namespace zorcall {

/// The form of the output for people. Programs get JSON.
struct Display
{
    bool table = false; ///< tables instead of JSON
    bool colour = false;
    bool headers = true; ///< column titles of a table
};

/// The weight or colour of a text at a terminal.
enum class Ink { Plain, Bold, Dim, Red, Green, Yellow, Cyan };

/// @p text between the escape sequences of ECMA-48, unchanged without colour.
std::string painted(const std::string& text, Ink ink, const Display& display);

} // namespace zorcall
