#pragma once

#include <stdexcept>
#include <string>

namespace zorcall {

/// Exit code of the program; for a script, the highest of its lines.
enum ExitCode : int {
    Answered = 0,
    Rejected = 1,     ///< by the tool or by the gate
    Usage = 2,        ///< usage error; the call was not sent
    NoConnection = 3, ///< failed, or lost before the answer was complete
    TimedOut = 4,
    BadReply = 5, ///< exception message or invalid reply
    NoOutput = 6  ///< standard output could not be written
};

/// A call without an answer; what() is the message for the user.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
    ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

/// An exception message of the service. The connection remains usable.
class ServiceException : public Failure
{
public:
    explicit ServiceException(const std::string& message)
        : Failure(BadReply, "the service answered with an exception: " + message), message_(message)
    {
    }
    /// The message without zorcall's prefix.
    const std::string& message() const { return message_; }

private:
    std::string message_;
};

} // namespace zorcall
