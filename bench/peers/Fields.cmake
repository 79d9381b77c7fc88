# Reads the records from JSON, the description of the interface, and writes to OUT
#   Peers.proto   the same records and read calls for gRPC
#   PeerFields.h  macros that expand FIELD(C++ type, name, name in the accessors of gRPC) for each field of a record
cmake_minimum_required(VERSION 3.25)

file(READ ${JSON} interface)
set(proto "syntax = \"proto3\";\npackage peers;\n")
set(header "#pragma once\n")
set(proto_type_bool bool)
set(proto_type_i32 int32)
set(proto_type_i64 int64)
set(proto_type_string string)
set(cpp_type_bool bool)
set(cpp_type_i32 std::int32_t)
set(cpp_type_i64 std::int64_t)
set(cpp_type_string std::string)

string(JSON struct_count LENGTH "${interface}" structs)
math(EXPR last_struct "${struct_count} - 1")
foreach(i RANGE ${last_struct})
    string(JSON record GET "${interface}" structs ${i} name)
    if(NOT record MATCHES "^(Disk|Partition)Info$")
        continue()
    endif()
    string(JSON fields GET "${interface}" structs ${i} fields)
    string(JSON field_count LENGTH "${fields}")
    math(EXPR last_field "${field_count} - 1")
    string(APPEND proto "message ${record} {\n")
    string(APPEND header "#define PEERS_${record}(FIELD)")
    foreach(k RANGE ${last_field})
        string(JSON name GET "${fields}" ${k} name)
        string(JSON type GET "${fields}" ${k} typeId)
        string(JSON number GET "${fields}" ${k} key)
        if(NOT DEFINED proto_type_${type})
            message(FATAL_ERROR "${record}.${name}: type ${type} has no counterpart in this script")
        endif()
        string(REGEX REPLACE "([a-z0-9])([A-Z])" "\\1_\\2" proto_name "${name}")
        string(TOLOWER "${proto_name}" proto_name)
        string(APPEND proto "  ${proto_type_${type}} ${proto_name} = ${number};\n")
        string(APPEND header " \\\n    FIELD(${cpp_type_${type}}, ${name}, ${proto_name})")
    endforeach()
    string(APPEND proto "}\n")
    string(APPEND header "\n")
endforeach()

string(APPEND proto "message Nothing {}\n"
    "message Drive { string drive_letter = 1; }\n"
    "message Disks { repeated DiskInfo records = 1; }\n"
    "message Partitions { repeated PartitionInfo records = 1; }\n"
    "service Plugin {\n"
    "  rpc GetPartitionInfo(Drive) returns (PartitionInfo);\n"
    "  rpc ListAllDisks(Nothing) returns (Disks);\n"
    "  rpc GetAllPartitionInfo(Nothing) returns (Partitions);\n"
    "}\n")
file(WRITE ${OUT}/Peers.proto "${proto}")
file(WRITE ${OUT}/PeerFields.h "${header}")
