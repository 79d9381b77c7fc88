#include "agent/Listing.h"

#include "agent/JsonWriter.h"
#include "agent/TextTable.h"

#include <algorithm>
#include <ostream>
#include <sstream>
#include <utility>

namespace zorcall {

namespace {

void writeDoc(std::ostream& out, const std::string& indent, const std::string& doc)
{
    std::size_t begin = 0;
    while (begin < doc.size()) {
        const std::size_t end = std::min(doc.find('\n', begin), doc.size());
        out << indent << doc.substr(begin, end - begin) << '\n';
        begin = end + 1;
    }
}

void writeFields(std::ostream& out, const std::vector<Field>& fields)
{
    for (const Field& field : fields) {
        out << "  " << field.name << ": " << field.type.name() << '\n';
        writeDoc(out, "      ", field.doc);
    }
}

Style styleOf(const Tool& tool)
{
    if (tool.toolClass == "destroys")
        return Style::Red;
    if (tool.toolClass == "changes")
        return Style::Yellow;
    return tool.toolClass == "opens" ? Style::Cyan : Style::Green;
}

// One table for all groups, so that the columns of all groups are aligned.
std::vector<std::string> alignedRows(const Tools& tools, const Display& display)
{
    TextTable table({{"NAME"}, {"CLASS"}, {"SUMMARY"}});
    for (const Tool* tool : tools) {
        table.add({tool->method->name, tool->toolClass, tool->summary()});
        table.setStyle(1, styleOf(*tool));
    }
    std::stringstream text;
    table.write(text, {true, display.colour, false});
    std::vector<std::string> rows;
    for (std::string row; std::getline(text, row);)
        rows.push_back(row);
    return rows;
}

void writeJsonMember(std::ostream& out, const char* key, const std::string& value)
{
    out << '"' << key << "\": ";
    writeJsonString(out, value);
}

void writeJsonArgument(std::ostream& out, const Field& argument)
{
    out << '{';
    writeJsonMember(out, "name", argument.name);
    out << ", ";
    writeJsonMember(out, "type", argument.type.name());
    out << ", ";
    writeJsonMember(out, "doc", argument.doc);
    out << '}';
}

void writeJsonTool(std::ostream& out, const Tool& tool)
{
    const std::pair<const char*, std::string> members[] = {
        {"name", tool.method->name}, {"group", tool.group},       {"class", tool.toolClass},
        {"title", tool.title},       {"summary", tool.summary()}, {"result", tool.method->result.name()}};
    out << '{';
    for (const auto& [key, value] : members) {
        writeJsonMember(out, key, value);
        out << ", ";
    }
    out << "\"arguments\": [";
    const std::vector<Field>& arguments = tool.method->arguments;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        out << (i == 0 ? "" : ", ");
        writeJsonArgument(out, arguments[i]);
    }
    out << "]}";
}

} // namespace

void writeSignatures(std::ostream& out, const Tools& tools)
{
    for (const Tool* tool : tools)
        out << tool->method->signature() << '\n';
}

void writeGroups(std::ostream& out, const Catalogue& catalogue, const Tools& tools, const Display& display)
{
    const std::vector<std::string> rows = alignedRows(tools, display);
    for (const Group& group : catalogue.groups()) {
        bool first = true;
        for (std::size_t i = 0; i < tools.size(); ++i) {
            if (tools[i]->group != group.name)
                continue;
            if (first && display.headers)
                out << styled(group.name + ": " + group.about, Style::Bold, display) << '\n';
            first = false;
            out << "  " << rows[i] << '\n';
        }
    }
}

void writeToolsJson(std::ostream& out, const Tools& tools)
{
    out << '[';
    for (std::size_t i = 0; i < tools.size(); ++i) {
        out << (i == 0 ? "" : ",\n ");
        writeJsonTool(out, *tools[i]);
    }
    out << "]\n";
}

void writeMethod(std::ostream& out, const Interface& service, const Tool& tool)
{
    const Method& method = *tool.method;
    out << method.signature() << '\n';
    writeDoc(out, "  ", method.doc);
    out << "  Group: " << tool.group << ". Class: " << tool.toolClass << ".\n";
    if (!method.arguments.empty()) {
        out << "\nArguments:\n";
        writeFields(out, method.arguments);
    }
    if (!method.result.record.empty()) {
        out << '\n' << method.result.record << ":\n";
        writeFields(out, service.record(method.result.record).fields);
    }
}

} // namespace zorcall
