#include "agent/Listing.h"

#include <algorithm>
#include <ostream>

namespace zorcall {

namespace {

const char* const kHelp = R"(Usage: zorcall [options] METHOD [name=value ...]
       zorcall [options] --script FILE
       zorcall --list [METHOD]

Calls a tool of the disk and partition manager and prints its answer as JSON.

  --gated          call PreProcessing first and PostProcessing afterwards; print all three answers
  --patient        repeat PreProcessing, up to the timeout, while it reports an operation in progress
  --allow-missing  do not require all arguments; missing ones are not sent
  --script FILE    run one call per line on one connection; "-" reads standard input
  --table          with --script: print one short row per call
  --list [METHOD]  list the methods, or document one
  --host HOST      host of the service (localhost)
  --port PORT      port of the service (AGENT_NATIVE_PORT)
  --timeout SEC    timeout of the connection and of each answer (30)
  -h, --help       print this help; with a METHOD, the same as --list METHOD
  --version        print the version

Exit codes: 0 answered, 1 rejected by the tool or the gate, 2 usage error, 3 connection failed or lost,
4 timeout, 5 exception of the service or invalid reply, 6 standard output could not be written.
)";

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
