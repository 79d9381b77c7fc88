#pragma once

#include <QtCore/QMetaMethod>

/// How an argument is passed to a parameter of a host method.
enum class Passing {
    Rejected, ///< rejected: the method would read the argument's memory as another type
    Direct,   ///< by the argument's own address
    Widened   ///< by the address of its value as a 64-bit integer, readable as an integer of any size
};

/// Decides whether a parameter accepts an argument of the meta type @p argument. It does if both types are
/// equal, or if both are integers or enumerations of the same size; bool is neither.
///
/// The size of an enumeration is known only after its registration as a meta type, which Q_ENUM does not do.
/// An unregistered enumeration that the class of @p method or a base class declares with Q_ENUM receives a
/// widened integer. Any other unregistered type is rejected. Any thread.
Passing passingOf(const QMetaMethod& method, int parameter, int argument);

/// True if the parameters of @p method accept arguments of these @p count meta types. The method can have
/// fewer parameters than arguments.
bool acceptsArguments(const QMetaMethod& method, const int* arguments, int count);

/// True if the declared result type of @p method is the meta type @p result, in any spelling.
/// QMetaMethod::invoke applies the same rule.
bool hasResultType(const QMetaMethod& method, int result);
