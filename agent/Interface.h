#pragma once

#include <map>
#include <string>
#include <vector>

class QByteArray;
class QJsonObject;

namespace zorcall {

/// The types of the interface.
enum class Kind { Bool, I32, I64, String, Record, List };

struct Type
{
    Kind kind = Kind::String;
    std::string record; ///< name of a record, or of the records in a list
    Kind element{};     ///< kind of the entries of a list; lists are not nested

    /// As in the interface file: "i32", "TaskInfo", "list<DiskInfo>".
    std::string name() const;
    /// Type of the entries of a list.
    Type entry() const;
};

struct Field
{
    int id = 0;
    std::string name;
    Type type;
    std::string doc;
};

struct Record
{
    std::string name;
    std::vector<Field> fields; ///< in id order
};

struct Method
{
    std::string name;
    std::string doc;
    std::vector<Field> arguments; ///< in id order
    Type result;

    /// "WipeDisk(diskIndex: i32, eraseCount: i32) -> string"
    std::string signature() const;
    /// Tools that act return a string; all other methods return data.
    bool acts() const { return result.kind == Kind::String; }
};

/// Description of the service, so that methods need no code of their own. Immutable, thread-safe.
class Interface
{
public:
    /// The description generated from the interface file and built into the program.
    static const Interface& builtIn();
    /// Parses the JSON that the Thrift compiler generates. Throws std::runtime_error if it is invalid or
    /// contains an unsupported type.
    explicit Interface(const QByteArray& json);

    /// In declaration order.
    const std::vector<Method>& methods() const { return methods_; }
    std::vector<std::string> methodNames() const;
    /// Null for an unknown name.
    const Method* method(const std::string& name) const;
    /// Throws std::runtime_error for an unknown name.
    const Record& record(const std::string& name) const;
    /// Value of a string constant, for example TASK_QUEUED. Throws std::runtime_error for an unknown name.
    const std::string& constant(const std::string& name) const;

private:
    void readConstant(const QJsonObject& description);
    void readRecord(const QJsonObject& description);
    void readMethod(const QJsonObject& description);

    std::map<std::string, std::string> constants_;
    std::vector<Record> records_;
    std::vector<Method> methods_;
};

} // namespace zorcall
