#pragma once

#include <string>
#include <vector>

/// One argument of a method of the service: its name and its type as the interface file spells it.
struct InterfaceArgument
{
    std::string name;
    std::string type;
};

/// One method of the service.
struct InterfaceMethod
{
    std::string name;
    std::vector<InterfaceArgument> arguments;
};

/// The methods of the service in declaration order, read from the JSON file that the build generates from the
/// interface file. Empty if that file is missing; a test that uses it depends on the target `zornative_json`.
std::vector<InterfaceMethod> interfaceMethods();
