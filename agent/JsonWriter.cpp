#include "agent/JsonWriter.h"

#include "agent/Text.h"

#include <cstdio>
#include <ostream>
#include <sstream>

namespace zorcall {

namespace {

struct Escape
{
    char character;
    const char* text;
};

constexpr Escape kEscapes[] = {{'"', "\\\""}, {'\\', "\\\\"}, {'\b', "\\b"}, {'\f', "\\f"},
                               {'\n', "\\n"}, {'\r', "\\r"},  {'\t', "\\t"}};

void writeEscaped(std::ostream& out, char c)
{
    for (const Escape& row : kEscapes) {
        if (c == row.character) {
            out << row.text;
            return;
        }
    }
    if (static_cast<unsigned char>(c) >= 0x20) {
        out << c;
        return;
    }
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "\\u%04x", static_cast<unsigned>(c));
    out << buffer;
}

void writeRecord(std::ostream& out, const Interface& service, const Record& record, const Value& value)
{
    out << '{';
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
        if (i != 0)
            out << ", ";
        writeJsonText(out, record.fields[i].name);
        out << ": ";
        writeJson(out, service, record.fields[i].type, value.part(i));
    }
    out << '}';
}

void writeList(std::ostream& out, const Interface& service, const Type& entry, const Value& value)
{
    out << '[';
    for (std::size_t i = 0; i < value.parts().size(); ++i) {
        if (i != 0)
            out << ", ";
        writeJson(out, service, entry, value.part(i));
    }
    out << ']';
}

} // namespace

void writeJsonText(std::ostream& out, const std::string& text)
{
    out << '"';
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t length = utf8Length(text, position);
        if (length == 0)
            out << "\xEF\xBF\xBD";
        else if (length == 1)
            writeEscaped(out, text[position]);
        else
            out.write(text.data() + position, static_cast<std::streamsize>(length));
        position += length == 0 ? 1 : length;
    }
    out << '"';
}

void writeJson(std::ostream& out, const Interface& service, const Type& type, const Value& value)
{
    switch (type.kind) {
    case Kind::Bool:
        out << (value.boolean() ? "true" : "false");
        return;
    case Kind::I32:
    case Kind::I64:
        out << value.integer();
        return;
    case Kind::String:
        writeJsonText(out, value.text());
        return;
    case Kind::Record:
        writeRecord(out, service, service.record(type.record), value);
        return;
    case Kind::List:
        writeList(out, service, type.entry(), value);
        return;
    }
}

std::string toJson(const Interface& service, const Type& type, const Value& value)
{
    std::ostringstream out;
    writeJson(out, service, type, value);
    return out.str();
}

} // namespace zorcall
