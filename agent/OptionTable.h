#pragma once

#include "manual/Manual.h"

#include <string>
#include <vector>

namespace zorcall {

/// An option. The parser, --help, the manual page and the completion use the same table.
struct OptionRow
{
    const char* name;
    const char* value; ///< name of its value, nullptr for a flag; "[WORD]" is an argument, not a value
    const char* help;

    bool takesValue() const { return value != nullptr && value[0] != '['; }
    /// The option with its value, as in --help: "--port PORT".
    std::string term() const;
};

const std::vector<OptionRow>& optionTable();

/// The description of the program.
manual::Manual programManual();

} // namespace zorcall
