// A host of components as a process of its own, copied into the application folder that a test has made. It
// executes the orders of its command line one after the other and reports on standard output.
//
// clang-format off
//   engine | language          before the first order: with an engine; with the host's language object too
//   trace                      writes each check-point of the loading and each connection to the language object
//   tree[:NAME]  list:A,B      loadComponents
//   load:NAME[:PARENT]         loadComponent
//   find:NAME                  component
//   components                 the list as JSON
//   delete:NAME                deletes the component itself
//   victim:NAME                the component that one named Killer takes with it
//   refuse                     deletes each further component when its signal arrives
//   switch                     changes the language
//   tell                       lets the language object that QML sees change the language
//   close                      destroys the manager and serves the deferred events
// clang-format on
#include "plugin/ComponentBase.h"
#include "plugin/ComponentMgr.h"
#include "plugin/HandOver.h"

#include <QtCore/QEvent>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaMethod>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

#include <cstdio>
#include <memory>

namespace {

void say(const QString& text)
{
    std::puts(text.toUtf8().constData());
}

bool tracing = false;

void traceCheckPoint(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (text.contains(QLatin1String("loadComponent(")))
        say(QStringLiteral("check-point ") +
            text.section(QLatin1Char('('), 1).section(QLatin1Char(')'), 0, 0));
}

class Language : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void sigCurrentLanguageChanged();

protected:
    void connectNotify(const QMetaMethod&) override
    {
        if (tracing)
            say(QStringLiteral("language connected"));
    }
};

class Host
{
public:
    void prepare(const QString& what)
    {
        if (!engine_)
            engine_ = std::make_unique<QQmlApplicationEngine>();
        if (what == QLatin1String("language"))
            engine_->rootContext()->setContextProperty(QStringLiteral("multilanguage"), &language_);
    }

    void order(const QString& text)
    {
        const QString verb = text.section(QLatin1Char(':'), 0, 0);
        const QString name = text.section(QLatin1Char(':'), 1, 1);
        if (!manager_)
            makeManager();
        if (verb == QLatin1String("trace")) {
            tracing = true;
            qInstallMessageHandler(traceCheckPoint);
        } else if (verb == QLatin1String("tree"))
            name.isNull() ? manager_->loadComponents() : manager_->loadComponents(name);
        else if (verb == QLatin1String("list"))
            manager_->loadComponents(name.split(QLatin1Char(',')));
        else if (verb == QLatin1String("load"))
            said(QStringLiteral("loaded"), manager_->loadComponent(name, text.section(QLatin1Char(':'), 2)));
        else if (verb == QLatin1String("find"))
            said(QStringLiteral("found"), manager_->component(name));
        else if (verb == QLatin1String("components"))
            list();
        else if (verb == QLatin1String("delete"))
            delete manager_->component(name);
        else if (verb == QLatin1String("tell"))
            QMetaObject::invokeMethod(
                engine_->rootContext()->contextProperty(QStringLiteral("multilanguage")).value<QObject*>(),
                "sigCurrentLanguageChanged");
        else if (verb == QLatin1String("victim"))
            qputenv("TEST_VICTIM", QByteArray::number(quintptr(manager_->component(name))));
        else if (verb == QLatin1String("refuse"))
            QObject::connect(manager_.get(), &CComponentMgr::sigNewComponent,
                             [this](const QString& newOne) { delete manager_->component(newOne); });
        else if (verb == QLatin1String("switch"))
            Q_EMIT language_.sigCurrentLanguageChanged();
        else if (verb == QLatin1String("close"))
            close();
        else
            qFatal("unknown order %s", qPrintable(text));
    }

private:
    void makeManager()
    {
        manager_ = std::make_unique<CComponentMgr>(engine_.get());
        QObject::connect(manager_.get(), &CComponentMgr::sigNewComponent,
                         [](const QString& name, const QString& parent) {
                             say(QStringLiteral("new '%1' '%2'").arg(name, parent));
                         });
        QObject::connect(manager_.get(), &CComponentMgr::sigComponentsChanged,
                         [] { say(QStringLiteral("changed")); });
    }

    static void said(const QString& what, QObject* object)
    {
        auto* component = static_cast<CComponentBase*>(object);
        say(what + QLatin1Char(' ') + (component == nullptr ? QStringLiteral("nothing") : component->name()));
    }

    QVariantList entries() const { return manager_->property("components").toList(); }

    void list() const
    {
        QJsonArray array;
        for (const QVariant& entry : entries()) {
            QVariantMap map = entry.toMap();
            auto* object = map.value(QStringLiteral("component")).value<QObject*>();
            map[QStringLiteral("component")] =
                object == nullptr ? QStringLiteral("nothing") : object->property("name").toString();
            array.append(QJsonObject::fromVariantMap(map));
        }
        say(QStringLiteral("components ") +
            QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact)));
    }

    void close()
    {
        manager_.reset();
        say(QStringLiteral("closed"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        makeManager();
    }

    Language language_;
    std::unique_ptr<QQmlApplicationEngine> engine_;
    std::unique_ptr<CComponentMgr> manager_;
};

} // namespace

int main(int argc, char** argv)
{
    handover::Marked<QGuiApplication> application(argc, argv);
    Host host;
    const QStringList arguments = application.arguments().mid(1);
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("engine") || argument == QLatin1String("language"))
            host.prepare(argument);
        else
            host.order(argument);
        std::fflush(stdout);
    }
    say(QStringLiteral("end"));
    return 0;
}

#include "component_host.moc"
