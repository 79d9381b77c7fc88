#pragma once

#include <string>
#include <vector>

namespace manual {

/// A term and its explanation: an option, an exit code, a variable or an example.
struct Row
{
    std::string term;
    std::string text; ///< a line feed is only a space
};

struct Section
{
    std::string title;
    std::vector<Row> rows;
};

/// The description of a program. Its --help and its manual page are made from it.
struct Manual
{
    std::string program;
    std::string summary;            ///< a phrase without a full stop
    std::vector<std::string> usage; ///< one line each, without the program's name
    std::string description;        ///< whole sentences
    std::vector<Section> sections;
    std::vector<std::string> seeAlso; ///< names of programs
};

/// The text of --help, at most 100 columns wide.
std::string helpText(const Manual& manual);

/// The manual page for section 1, in the man(7) macros. It contains no date, so that builds are reproducible.
std::string manualPage(const Manual& manual, const std::string& version);

} // namespace manual
