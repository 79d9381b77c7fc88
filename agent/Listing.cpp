#include "agent/Listing.h"

#include <algorithm>
#include <ostream>

namespace zorcall {

namespace {

const char* const kHelp = R"(Usage: zorcall [options] METHOD [name=value ...]
       zorcall [options] --script FILE
       zorcall --list [METHOD]

Calls a tool of the disk and partition manager and prints its answer as JSON.

  --gated          PreProcessing before the call and PostProcessing after it; shows all three answers
  --patient        ask the gate again, up to the timeout, while it says that an operation is in progress
  --allow-missing  leave arguments that are not given off the wire
  --script FILE    one call a line on one connection; "-" reads standard input
  --table          with --script: one short row a call
  --list [METHOD]  the methods, or one with its documentation
  --host HOST      where the service is (localhost)
  --port PORT      its port (AGENT_NATIVE_PORT)
  --timeout SEC    how long to wait for the connection, and for each answer (30)
  -h, --help       this text; with a METHOD as --list
  --version        the version

Exit codes: 0 answered, 1 refused by the tool or the gate, 2 usage, 3 no connection, 4 timed out,
5 an exception of the service or a reply that is none, 6 the answer could not be written.
)";

// Documentation stands indented under what it is about, line by line.
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

void writeHelp(std::ostream& out)
{
    out << kHelp;
}

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
