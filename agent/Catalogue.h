#pragma once

#include "agent/Interface.h"

#include <string>
#include <vector>

namespace zorcall {

/// A method with the properties that the interface file does not contain.
struct Tool
{
    const Method* method = nullptr;
    std::string title; ///< empty for a method of the gate
    std::string group;
    std::string toolClass; ///< "reads", "opens", "changes" or "destroys"

    /// First sentence of the method's documentation.
    std::string summary() const;
};

struct Group
{
    std::string name;
    std::string about;
};

/// The methods by group. Immutable, thread-safe.
class Catalogue
{
public:
    /// Made from the table that the gateway also uses.
    static const Catalogue& builtIn();
    /// @p json: the gateway's table. Throws std::runtime_error if it lacks a method of @p service.
    Catalogue(const Interface& service, const QByteArray& json);

    /// In alphabetical order; the gate is last.
    const std::vector<Group>& groups() const { return groups_; }
    /// In declaration order.
    const std::vector<Tool>& tools() const { return tools_; }
    /// The tools whose name, title, documentation, group or class contains @p word, ignoring case.
    std::vector<const Tool*> matching(const std::string& word) const;
    /// Role of an argument: "drive", "newLetter", "disk", "fileSystem" and others.
    std::string role(const std::string& argument) const;
    /// Suggested or required values of an argument.
    std::vector<std::string> suggestions(const std::string& argument) const;

private:
    struct Argument
    {
        std::string name;
        std::string role;
        std::vector<std::string> suggestions;
    };
    void readGroups(const QJsonObject& groups);
    void readTool(const Method& method, const QJsonObject& root);
    void readArguments(const QJsonObject& arguments);

    std::vector<Group> groups_;
    std::vector<Tool> tools_;
    std::vector<Argument> arguments_;
};

} // namespace zorcall
