#pragma once

#include "tests/support/Interface.h"

/// The output of `zorcall --list`: the methods of the interface file in their order.
inline std::string listedMethods()
{
    std::string lines;
    for (const InterfaceMethod& method : interfaceMethods()) {
        std::string arguments;
        for (const InterfaceArgument& argument : method.arguments)
            arguments += (arguments.empty() ? "" : ", ") + argument.name + ": " + argument.type;
        lines += method.name + '(' + arguments + ") -> " + method.result + '\n';
    }
    return lines;
}
