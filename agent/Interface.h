#pragma once

#include <map>
#include <string>
#include <vector>

class QByteArray;
class QJsonObject;

namespace zorcall {

/// The types that stand in the interface.
enum class Kind { Bool, I32, I64, String, Record, List };

struct Type
{
    Kind kind = Kind::String;
    std::string record; ///< Record, and List of records: name of the record
    Kind element{};     ///< List: kind of its entries; a list holds no lists

    /// As the interface file writes it: "i32", "TaskInfo", "list<DiskInfo>".
    std::string name() const;
    /// List: the type of its entries.
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
    /// A tool that acts answers with a text; all others report.
    bool acts() const { return result.kind == Kind::String; }
};

/// The service as data, so that no method needs code of its own. Immutable; any thread.
class Interface
{
public:
    /// The description that the interface compiler made and the program carries.
    static const Interface& builtIn();
    /// Reads a description in the interface compiler's JSON. Throws std::runtime_error if it is none, or
    /// holds a type that this program doesn't know.
    explicit Interface(const QByteArray& json);

    /// In declaration order.
    const std::vector<Method>& methods() const { return methods_; }
    std::vector<std::string> methodNames() const;
    /// Null if there is none of that name.
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
