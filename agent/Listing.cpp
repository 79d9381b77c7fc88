#include "agent/Listing.h"

#include <algorithm>
#include <ostream>

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

} // namespace

void writeList(std::ostream& out, const Interface& service)
{
    for (const Method& method : service.methods())
        out << method.signature() << '\n';
}

void writeMethod(std::ostream& out, const Interface& service, const Method& method)
{
    out << method.signature() << '\n';
    writeDoc(out, "  ", method.doc);
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
