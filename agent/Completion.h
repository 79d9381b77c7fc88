#pragma once

#include "agent/Catalogue.h"
#include "agent/Snapshot.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace zorcall {

/// The script of a shell, "bash" or "zsh". Throws a Failure with code Usage for any other.
std::string completionScript(const std::string& shell);

/// A word that can replace the last word of a command line.
struct Candidate
{
    std::string word;
    std::string text; ///< explanation, can be empty
};

/// The options of an incomplete command line that select the service.
struct LineAddress
{
    std::string host;
    std::string port;
};

/// Reads the inventory of the running host; no value if it cannot be read soon.
using InventoryReader = std::function<std::optional<Snapshot>(const LineAddress& address)>;

/// The candidates for the last word of @p line, which begins with the name of the program. After a blank,
/// this is an empty word. Calls @p read only for the number of a disk or a drive letter.
std::vector<Candidate> completeLine(const Catalogue& catalogue, const Interface& service,
                                    const std::string& line, const InventoryReader& read);

/// Writes one candidate per line, and its explanation after a tab.
void writeCandidates(std::ostream& out, const std::vector<Candidate>& candidates);

} // namespace zorcall
