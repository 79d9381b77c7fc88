#pragma once

#include "plugin/HostAccess.h"

#include <QtCore/QMetaType>
#include <QtCore/QPointer>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>

#include <initializer_list>
#include <optional>
#include <type_traits>

/// The thread on which a host method runs, relative to the caller.
enum class ConnectionRule {
    Call,    ///< application thread: automatic; any other: blocking queued
    Window,  ///< application thread: direct; any other: blocking queued
    Direct,  ///< always the caller's thread
    Blocking ///< always blocking queued; deadlocks on the application thread
};

/// The connection type of a rule on the calling thread.
Qt::ConnectionType connectionType(ConnectionRule rule);

/// True on the thread of the application object.
bool isApplicationThread();

/// A method of a host object, looked up once for several calls. Invalid if the object or the method is
/// missing, and after the object is destroyed.
class HostMethod
{
public:
    HostMethod(QObject* object, const QByteArray& name);

    bool isValid() const { return !object_.isNull() && method_.isValid(); }

    /// Calls the method with @p arguments under @p rule and returns its result. A blocking connection returns
    /// after the method has run, and waits for the application thread without a timeout. Empty if the method
    /// is invalid or its signature differs (see HostSignature.h).
    template <class Result, class... Arguments>
    std::optional<Result> call(ConnectionRule rule, const Arguments&... arguments) const
    {
        Result result{};
        const QGenericReturnArgument slot(typeName<Result>(), &result);
        if (!invoke(rule, slot, {argument(arguments)...}))
            return std::nullopt;
        return result;
    }

    /// As call, but discards the method's result. True if the call was made.
    template <class... Arguments> bool order(ConnectionRule rule, const Arguments&... arguments) const
    {
        return invoke(rule, QGenericReturnArgument(), {argument(arguments)...});
    }

private:
    struct Argument
    {
        int type;
        const void* value;
        qint64 widened; ///< value of an integer argument
    };

    template <class T> static const char* typeName() { return QMetaType::typeName(qMetaTypeId<T>()); }
    template <class T> static Argument argument(const T& value)
    {
        if constexpr (std::is_integral_v<T>)
            return {qMetaTypeId<T>(), &value, static_cast<qint64>(value)};
        else
            return {qMetaTypeId<T>(), &value, 0};
    }

    // The only function that crosses threads. QMetaMethod::invoke does not check the types of arguments, so a
    // method with a different signature would misread memory.
    bool invoke(ConnectionRule rule, QGenericReturnArgument result,
                std::initializer_list<Argument> arguments) const;

    QPointer<QObject> object_;
    QMetaMethod method_;
};

/// Looks the method up as @p name and calls it once, see HostMethod::call.
template <class Result, class... Arguments>
std::optional<Result> callHost(QObject* object, const QByteArray& name, ConnectionRule rule,
                               const Arguments&... arguments)
{
    return HostMethod(object, name).call<Result>(rule, arguments...);
}

/// Looks the method up as @p name and calls it once, see HostMethod::order.
template <class... Arguments>
bool orderHost(QObject* object, const QByteArray& name, ConnectionRule rule, const Arguments&... arguments)
{
    return HostMethod(object, name).order(rule, arguments...);
}
