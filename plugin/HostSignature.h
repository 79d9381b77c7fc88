#pragma once

#include <QtCore/QMetaMethod>

/// How an argument is handed to a parameter of a host method.
enum class Passing {
    Refused, ///< not at all: the method would read the argument's memory as another type
    Direct,  ///< by the argument's own address
    Widened  ///< by the address of its value as a 64-bit integer, which an integer of any size can be read
             ///< from
};

/// Decides whether a parameter accepts an argument of the meta type @p argument. It does if both types are
/// equal, or if both are integers or enumerations of the same size; bool is neither.
///
/// An enumeration's size is known once it is registered as a meta type. Q_ENUM does not register it: an
/// enumeration that is only declared so, in the class of @p method or a base class, gets a widened integer.
/// Any other type that is not registered is refused. Any thread.
Passing passingOf(const QMetaMethod& method, int parameter, int argument);

/// True if the library calls @p method with arguments of these @p count meta types, as far as the parameters
/// decide. A method can have fewer parameters than arguments.
bool acceptsArguments(const QMetaMethod& method, const int* arguments, int count);

/// True if the library gets a result of the meta type @p result from @p method: the declared type is the same
/// type, in any spelling. QMetaMethod::invoke applies the same rule.
bool hasResultType(const QMetaMethod& method, int result);
