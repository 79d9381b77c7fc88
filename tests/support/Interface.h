#pragma once

#include <string>
#include <vector>

/// One argument of a method of the service, as the interface file declares it.
struct InterfaceArgument
{
    int id;
    std::string type;
    std::string name;
};

/// One method of the service. The result of a list is spelled as in the interface file, "list<DiskInfo>".
struct InterfaceMethod
{
    std::string name;
    std::string result;
    std::vector<InterfaceArgument> arguments;
};

/// The methods of the service in declaration order, read from the JSON file that the build generates from the
/// interface file. Fails the process if that file is missing; a test that uses it depends on the target
/// `zornative_json`.
const std::vector<InterfaceMethod>& interfaceMethods();
