#pragma once

#include "hostcheck/HostCheck.h"

#include <vector>

namespace hostcheck {

/// How the library finds an object.
enum class Way { ContextProperty, RootChild, Window, WindowChild };

/// The effects on the library's tools and its scan if a member cannot be used, as complete sentences.
struct Effects
{
    const char* missing;        ///< the member, or its object, is missing
    const char* otherSignature; ///< the library does not call it or cannot convert its type
};

/// A member that the library uses.
struct Member
{
    Kind kind;
    const char* type;      ///< of a result or a property; empty if the result is not used
    const char* signature; ///< of a method or signal; the name of a property
    Effects effects;
    bool written = false; ///< true for a property that is also written
};

struct Object
{
    Way way;
    const char* name;
    std::vector<Member> members;
};

/// All objects and members that the library uses.
const std::vector<Object>& hostIndex();

} // namespace hostcheck
