#pragma once

#include "plugin/HostAccess.h"

#include <QtCore/QMetaType>
#include <QtCore/QPointer>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <initializer_list>
#include <optional>
#include <type_traits>

/// Which thread a host method runs on, seen from the caller.
enum class ConnectionRule {
    Call,    ///< application thread: automatic; any other: blocking queued
    Window,  ///< application thread: direct; any other: blocking queued
    Direct,  ///< always the caller's thread
    Blocking ///< always blocking queued; would never return on the application thread
};

/// The connection type that a rule means on the calling thread.
Qt::ConnectionType connectionType(ConnectionRule rule);

/// True on the thread of the application object.
bool isApplicationThread();

/// A method of a host object, found once and called more than once. Not valid if either is missing, or once
/// the object has gone.
class HostMethod
{
public:
    HostMethod(QObject* object, const QByteArray& name);

    bool isValid() const { return !object_.isNull() && method_.isValid(); }

    /// Calls the method with @p arguments under @p rule and gives back its result. With a blocking connection
    /// it returns after the method has run, and waits for the application thread as long as that takes. Empty
    /// if the method is not valid or has another signature (see HostSignature.h).
    template <class Result, class... Arguments>
    std::optional<Result> call(ConnectionRule rule, const Arguments&... arguments) const
    {
        Result result{};
        const QGenericReturnArgument slot(typeName<Result>(), &result);
        if (!invoke(rule, slot, {argument(arguments)...}))
            return std::nullopt;
        return result;
    }

    /// As call, for a method whose result is not asked for. True if the call was made.
    template <class... Arguments> bool order(ConnectionRule rule, const Arguments&... arguments) const
    {
        return invoke(rule, QGenericReturnArgument(), {argument(arguments)...});
    }

private:
    struct Argument
    {
        int type;
        const void* value;
        qint64 widened; ///< the value of an integer
    };

    template <class T> static const char* typeName() { return QMetaType::typeName(qMetaTypeId<T>()); }
    template <class T> static Argument argument(const T& value)
    {
        if constexpr (std::is_integral_v<T>)
            return {qMetaTypeId<T>(), &value, static_cast<qint64>(value)};
        else
            return {qMetaTypeId<T>(), &value, 0};
    }

    // The one place that crosses threads. QMetaMethod::invoke does not look at the types of arguments: a
    // method of another signature would read them as something that they are not.
    bool invoke(ConnectionRule rule, QGenericReturnArgument result,
                std::initializer_list<Argument> arguments) const;

    QPointer<QObject> object_;
    QMetaMethod method_;
};

/// HostMethod::call on the method that is found under @p name now.
template <class Result, class... Arguments>
std::optional<Result> callHost(QObject* object, const QByteArray& name, ConnectionRule rule,
                               const Arguments&... arguments)
{
    return HostMethod(object, name).call<Result>(rule, arguments...);
}

/// HostMethod::order on the method that is found under @p name now.
template <class... Arguments>
bool orderHost(QObject* object, const QByteArray& name, ConnectionRule rule, const Arguments&... arguments)
{
    return HostMethod(object, name).order(rule, arguments...);
}
