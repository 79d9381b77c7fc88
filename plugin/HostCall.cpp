#include "plugin/HostCall.h"

#include "plugin/HandOver.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <algorithm>
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
                        std::initializer_list<QGenericArgument> arguments,
                        std::initializer_list<int> types) const
{
    if (!isValid() || method_.parameterCount() > static_cast<int>(types.size()))
        return false;
    for (int i = 0; i < method_.parameterCount(); ++i) {
        if (method_.parameterType(i) != types.begin()[i])
            return false;
    }
    std::array<QGenericArgument, 4> places;
    Q_ASSERT(arguments.size() <= places.size());
    std::copy(arguments.begin(), arguments.end(), places.begin());
    handover::give();
    const bool called = method_.invoke(object_.data(), connectionType(rule), result, places[0], places[1],
                                       places[2], places[3]);
    handover::take();
    return called;
}
