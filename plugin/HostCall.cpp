#include "plugin/HostCall.h"

#include "plugin/HostSignature.h"
#include "plugin/TsanAnnotations.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <array>

bool isApplicationThread()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application == nullptr || QThread::currentThread() == application->thread();
}

Qt::ConnectionType connectionType(ConnectionRule rule)
{
    switch (rule) {
    case ConnectionRule::Call:
        return isApplicationThread() ? Qt::AutoConnection : Qt::BlockingQueuedConnection;
    case ConnectionRule::Window:
        return isApplicationThread() ? Qt::DirectConnection : Qt::BlockingQueuedConnection;
    case ConnectionRule::Direct:
        return Qt::DirectConnection;
    case ConnectionRule::Blocking:
        return Qt::BlockingQueuedConnection;
    }
    return Qt::AutoConnection;
}

HostMethod::HostMethod(QObject* object, const QByteArray& name)
    : object_(object), method_(findHostMethod(object, name))
{
}

bool HostMethod::invoke(ConnectionRule rule, QGenericReturnArgument result,
                        std::initializer_list<Argument> arguments) const
{
    if (!isValid() || method_.parameterCount() > static_cast<int>(arguments.size()))
        return false;
    std::array<QGenericArgument, 4> places;
    Q_ASSERT(arguments.size() <= places.size());
    for (int i = 0; i < method_.parameterCount(); ++i) {
        const Argument& argument = arguments.begin()[i];
        switch (passingOf(method_, i, argument.type)) {
        case Passing::Rejected:
            return false;
        case Passing::Direct:
            places[i] = QGenericArgument(QMetaType::typeName(argument.type), argument.value);
            break;
        case Passing::Widened:
            places[i] = QGenericArgument("qlonglong", &argument.widened);
            break;
        }
    }
    TsanAnnotations::release();
    const bool called = method_.invoke(object_.data(), connectionType(rule), result, places[0], places[1],
                                       places[2], places[3]);
    TsanAnnotations::acquire();
    return called;
}
