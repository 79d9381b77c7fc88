#pragma once

#include <stdexcept>
#include <string>

namespace zorcall {

/// What the program tells its caller; a script's code is the highest of its lines.
enum ExitCode : int {
    Answered = 0,
    Refused = 1,      ///< by the tool or by the gate
    Usage = 2,        ///< nothing was sent for this call
    NoConnection = 3, ///< none came about, or it was lost before the answer was complete
    TimedOut = 4,
    BadReply = 5, ///< an exception message, or a reply that is not of the protocol
    NoOutput = 6  ///< the answer came but could not be written
};

/// Why a call has no answer; what() is one line for the user.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
    ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

/// An exception message of the service. The connection can still be used.
class ServiceException : public Failure
{
public:
    explicit ServiceException(const std::string& message)
        : Failure(BadReply, "the service answered with an exception: " + message), message_(message)
    {
    }
    /// The service's own words.
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

} // namespace zorcall
