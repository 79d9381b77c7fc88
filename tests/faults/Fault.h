#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <iosfwd>
#include <string>
#include <vector>

/// The faults of a host's object or of one of its members. Bits, so that a row of a table can name several.
enum Fault : unsigned {
    Whole = 0,
    NoObject = 1,
    NoMember = 2,
    OtherSignature = 4, ///< a method with other parameters; a property is a method of that name
    OtherResult = 8,    ///< declared with another type of result, or of property; a signal is a method
    NoResult = 16,      ///< declared without a result
    WrongValue = 32,    ///< of the declared type, but not a meaningful value
    Throws = 64,        ///< its QML function throws
    OtherTypes = 128,   ///< a method with as many parameters of another type
    Refuses = 256,      ///< answers false, or with an objection
    NoEngine = 512,     ///< the bridge has no engine, so only the window and its children are found
    NoBridge = 1024     ///< the tools have no bridge
};

/// The state of the host during the calls.
enum Mood : unsigned {
    Free = 1,
    Busy = 2,    ///< a task is in execution; the pre-OS environment is enabled
    Covered = 4, ///< a dialog covers the window
    AnyMood = 7
};

/// One name of the index of host names.
struct Member
{
    QString object;
    QByteArray name;
    QByteArray parameters; ///< of a method, comma separated
    QByteArray type;       ///< of the result, empty for none; of a property
    bool isProperty = false;
    bool isSignal = false;
    bool onApplicationThread = true; ///< false where it is called or read on the caller's thread

    QString where() const { return object + '.' + QString::fromLatin1(name); }
};

const std::vector<Member>& allMembers();

/// One row of the matrix: a host with a fault.
struct FaultCase
{
    Member member; ///< with an empty name where the object is missing
    Fault fault = Whole;
    Mood mood = Free;

    std::string name() const;
};

/// Every fault that a member can have, in every mood.
std::vector<FaultCase> allFaultCases();

/// The same, and those that affect only the tools: a rejected question, and a missing engine or bridge.
std::vector<FaultCase> toolFaultCases();

/// The cases to run: all of @p cases, or those of one mood under a sanitizer, which makes each host many
/// times slower.
std::vector<FaultCase> sampled(const std::vector<FaultCase>& cases);

/// With one of these faults, the member is looked up but not called.
constexpr unsigned kNotCalled = NoMember | OtherSignature | OtherTypes | OtherResult | NoResult;
/// With one of these faults, the member has no usable answer.
constexpr unsigned kNoAnswer = kNotCalled | WrongValue | Throws | Refuses;

/// True if @p member cannot be called on that host. Any thread.
bool isSkipped(const Member& member, const FaultCase& host);

/// The documented answer of a tool, to the call of its row and to that of calls::encode.
QString expectedAnswer(const std::string& method, const FaultCase& host);
/// "object.member" of each call that the tool makes on a connection thread, in order.
QStringList expectedCalls(const std::string& method, const FaultCase& host);

void PrintTo(const FaultCase& row, std::ostream* out);
