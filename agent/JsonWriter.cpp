#include "agent/JsonWriter.h"

#include "agent/Text.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <ostream>
#include <sstream>

namespace zorcall {

namespace {

void writeRecord(std::ostream& out, const Interface& service, const Record& record, const Value& value)
{
    out << '{';
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
        if (i != 0)
            out << ", ";
        // Field names are identifiers, so they need no escapes.
        out << '"' << record.fields[i].name << "\": ";
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

void writeJsonString(std::ostream& out, const std::string& string)
{
    // A JSON document is an array or an object: the array's brackets are left out.
    const QByteArray array =
        QJsonDocument(QJsonArray{decodeUtf8(string).string}).toJson(QJsonDocument::Compact);
    out.write(array.constData() + 1, array.size() - 2);
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
        writeJsonString(out, value.text());
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
