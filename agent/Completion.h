#pragma once

#include "agent/Catalogue.h"
#include "agent/Snapshot.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace zorcall {

/// The completion script of a shell, "bash" or "zsh". Throws a Failure with code Usage for any other.
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

/// Reads the inventory of the running host. Returns no value if the service does not answer in time.
using InventoryReader = std::function<std::optional<Snapshot>(const LineAddress& address)>;

/// Returns the candidates for the last word of @p line, which begins with the name of the program. After a
/// space, the last word is empty. Calls @p read only for disk numbers and drive letters.
std::vector<Candidate> completeLine(const Catalogue& catalogue, const Interface& service,
                                    const std::string& line, const InventoryReader& read);

/// Writes one candidate per line, and its explanation after a tab.
void writeCandidates(std::ostream& out, const std::vector<Candidate>& candidates);

} // namespace zorcall
