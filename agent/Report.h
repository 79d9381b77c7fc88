#pragma once

#include "agent/Call.h"

#include <iosfwd>

namespace zorcall {

/// Where the answers of calls go. Every function throws a Failure with code NoOutput if they can't be
/// written.
class Report
{
public:
    virtual ~Report() = default;
    /// A call is about to be made, from line @p line of a script.
    virtual void begin(const Call& call, int line) = 0;
    /// One answer within @p call: that of its method, or of the gate around it.
    virtual void answer(const Call& call, const Method& method, const Value& value) = 0;
};

/// Writes each answer as JSON on a line of its own; within a gated call as an object whose one key is the
/// method.
class JsonReport : public Report
{
public:
    /// @p announce puts "> " and the call on a line before its answers.
    JsonReport(std::ostream& out, const Interface& service, bool announce);
    void begin(const Call& call, int line) override;
    void answer(const Call& call, const Method& method, const Value& value) override;

private:
    std::ostream& out_;
    const Interface& service_;
    bool announce_;
};

/// Writes one row a call: line, tool, and its answer in short.
class TableReport : public Report
{
public:
    TableReport(std::ostream& out, const Interface& service);
    void begin(const Call& call, int line) override;
    void answer(const Call& call, const Method& method, const Value& value) override;

private:
    std::ostream& out_;
    const Interface& service_;
    std::size_t toolWidth_;
    int line_ = 0;
};

/// Throws a Failure with code NoOutput unless everything written to @p out has arrived.
void requireWritten(std::ostream& out);

} // namespace zorcall
