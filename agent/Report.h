#pragma once

#include "agent/Call.h"
#include "agent/Display.h"

#include <iosfwd>

namespace zorcall {

/// Output of the answers. Every function throws a Failure with code NoOutput on a write error.
class Report
{
public:
    virtual ~Report() = default;
    /// Announces a call from line @p line of a script.
    virtual void begin(const Call& call, int line) = 0;
    /// Reports an answer of @p call: @p method is its own method or one of the gate.
    virtual void answer(const Call& call, const Method& method, const Value& value) = 0;
};

/// Writes each answer as JSON on one line; for a gated call, as an object with the method as its key.
class JsonReport : public Report
{
public:
    /// @p announce: each call is printed after "> " first.
    JsonReport(std::ostream& out, const Interface& service, bool announce);
    void begin(const Call& call, int line) override;
    void answer(const Call& call, const Method& method, const Value& value) override;

private:
    std::ostream& out_;
    const Interface& service_;
    bool announce_;
};

/// Writes lists of records as tables, and other answers as plain text.
class TextReport : public Report
{
public:
    TextReport(std::ostream& out, const Interface& service, const Display& display);
    void begin(const Call& call, int line) override;
    void answer(const Call& call, const Method& method, const Value& value) override;

private:
    std::ostream& out_;
    const Interface& service_;
    Display display_;
};

/// Writes one row per call: line, tool and a summary of the answer.
class TableReport : public Report
{
public:
    TableReport(std::ostream& out, const Interface& service, const Display& display);
    void begin(const Call& call, int line) override;
    void answer(const Call& call, const Method& method, const Value& value) override;

private:
    std::ostream& out_;
    const Interface& service_;
    std::size_t toolWidth_;
    int line_ = 0;
};

/// Flushes @p out. Throws a Failure with code NoOutput on a write error.
void requireWritten(std::ostream& out);

} // namespace zorcall
