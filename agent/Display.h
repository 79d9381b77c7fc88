#pragma once

#include <string>

namespace zorcall {

/// The form of the output.
struct Display
{
    bool table = false; ///< tables instead of JSON
    bool colour = false;
    bool headers = true; ///< column titles of a table
};

/// The weight or colour of text at a terminal.
enum class Style { Plain, Bold, Dim, Red, Green, Yellow, Cyan };

/// Encloses @p text in the escape sequences of ECMA-48. Returns it unchanged if colour is off.
std::string styled(const std::string& text, Style style, const Display& display);

} // namespace zorcall
