#include "agent/OptionTable.h"

namespace zorcall {

std::string OptionRow::term() const
{
    const std::string prefix = name == std::string("help") ? "-h, --" : "--";
    return prefix + name + (value == nullptr ? std::string() : ' ' + std::string(value));
}

const std::vector<OptionRow>& optionTable()
{
    static const std::vector<OptionRow> rows = {
        {"gated", nullptr, "call PreProcessing first and PostProcessing afterwards; print all three answers"},
        {"patient", nullptr,
         "repeat PreProcessing, up to the timeout, while it reports an operation in progress"},
        {"allow-missing", nullptr, "do not require all arguments; missing ones are not sent"},
        {"script", "FILE", "run one call per line on one connection; \"-\" reads standard input"},
        {"table", nullptr, "print tables, the default at a terminal; with --script, one short row per call"},
        {"json", nullptr, "print JSON, the default in a pipe, a file and with --script"},
        {"no-headers", nullptr, "print tables without column titles"},
        {"list", "[WORD]",
         "list the methods; with a WORD, document the method of that name, otherwise list the methods "
         "whose name, documentation, group or class contains it"},
        {"host", "HOST", "host of the service (localhost)"},
        {"port", "PORT",
         "port of the service (AGENT_NATIVE_PORT, otherwise the only service of this computer)"},
        {"timeout", "SEC", "timeout of the connection and of each answer (30)"},
        {"interval", "SEC", "with watch: time between two readings (1)"},
        {"help", nullptr, "print this help; with a METHOD, the same as --list METHOD"},
        {"version", nullptr, "print the version"},
    };
    return rows;
}

manual::Manual programManual()
{
    manual::Section options{"Options", {}};
    for (const OptionRow& row : optionTable())
        options.rows.push_back({row.term(), row.help});
    const manual::Section exitCodes{"Exit codes",
                                    {{"0", "answered"},
                                     {"1", "rejected by the tool or the gate"},
                                     {"2", "usage error, or several services; the call was not sent"},
                                     {"3", "no service, or connection failed or lost"},
                                     {"4", "timeout"},
                                     {"5", "exception of the service or invalid reply"},
                                     {"6", "standard output could not be written"}}};
    const manual::Section environment{
        "Environment",
        {{"AGENT_NATIVE_PORT", "port of the service, if --port is not given"},
         {"ZORCALL_PORTS",
          "ports of this computer on which zorcall searches for the service, if no port is given "
          "(9090-9153)"},
         {"NO_COLOR", "disables colours at a terminal, if it is not empty"}}};
    return {"zorcall",
            "call the agent service of a disk and partition manager",
            {"[options] METHOD [name=value ...]", "[options] --script FILE", "--list [WORD]",
             "watch [--interval SEC]", "completion bash|zsh"},
            "Calls a tool of the disk and partition manager and prints its answer: as a table at a terminal, "
            "otherwise as JSON. watch polls the inventory of disks and partitions, and prints each "
            "difference until the service ends. completion prints the completion script of a shell.",
            {options, exitCodes, environment},
            {"zorhost", "aibridge-mcp"}};
}

} // namespace zorcall
