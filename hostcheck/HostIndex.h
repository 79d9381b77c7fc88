#pragma once

#include "hostcheck/HostCheck.h"

#include <vector>

namespace hostcheck {

/// How the library gets at an object.
enum class Way { ContextProperty, RootChild, Window, WindowChild };

/// What follows for the library's tools and its scan if a member cannot be used. Whole sentences.
struct Effects
{
    const char* missing; ///< the member, or its object, is missing
    const char*
        otherSignature; ///< it is there with a signature that is not called, or a type without conversion
};

/// A member as the library asks for it.
struct Member
{
    Kind kind;
    const char* type;      ///< of a result or a property; empty where no result is asked for
    const char* signature; ///< of a method or signal; the name of a property
    Effects effects;
    bool written = false; ///< a property that is written too
};

struct Object
{
    Way way;
    const char* name;
    std::vector<Member> members;
};

/// Everything that the library looks for.
const std::vector<Object>& hostIndex();

} // namespace hostcheck
