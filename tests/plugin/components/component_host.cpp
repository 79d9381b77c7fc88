// A host of components. Tests copy it into their application folder. It executes the commands of its command
// line in order and prints the results to standard output.
//
// clang-format off
//   engine | language          before all other commands: creates an engine; also the language object
//   trace                      prints each check-point and each connection to the language object
//   tree[:NAME]  list:A,B      loadComponents
//   load:NAME[:PARENT]         loadComponent
//   find:NAME                  component
//   components                 prints the property components as JSON
//   delete:NAME                deletes the component
//   deleteOnRelease:NAME       the component that the one named Deleter deletes in its Release
//   deleteNew                  deletes each further component when its signal arrives
//   switch                     changes the language through the language object of the host
//   switchFromQml              changes the language through the context property of QML
//   close                      destroys the manager and processes the deferred deletions
// clang-format on
#include "plugin/ComponentBase.h"
#include "plugin/ComponentMgr.h"
#include "plugin/TsanAnnotations.h"

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

void print(const QString& text)
{
    std::puts(text.toUtf8().constData());
}

bool tracing = false;

void traceCheckPoint(QtMsgType, const QMessageLogContext&, const QString& text)
{
    if (text.contains(QLatin1String("loadComponent(")))
        print(QStringLiteral("check-point ") +
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
            print(QStringLiteral("language connected"));
    }
};

class Host
{
public:
    void prepare(const QString& command)
    {
        if (!engine_)
            engine_ = std::make_unique<QQmlApplicationEngine>();
        if (command == QLatin1String("language"))
            engine_->rootContext()->setContextProperty(QStringLiteral("multilanguage"), &language_);
    }

    void execute(const QString& command)
    {
        const QString verb = command.section(QLatin1Char(':'), 0, 0);
        const QString name = command.section(QLatin1Char(':'), 1, 1);
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
            printComponent(QStringLiteral("loaded"),
                           manager_->loadComponent(name, command.section(QLatin1Char(':'), 2)));
        else if (verb == QLatin1String("find"))
            printComponent(QStringLiteral("found"), manager_->component(name));
        else if (verb == QLatin1String("components"))
            printComponents();
        else if (verb == QLatin1String("delete"))
            delete manager_->component(name);
        else if (verb == QLatin1String("switchFromQml"))
            QMetaObject::invokeMethod(
                engine_->rootContext()->contextProperty(QStringLiteral("multilanguage")).value<QObject*>(),
                "sigCurrentLanguageChanged");
        else if (verb == QLatin1String("deleteOnRelease"))
            qputenv("TEST_DELETE_ON_RELEASE", QByteArray::number(quintptr(manager_->component(name))));
        else if (verb == QLatin1String("deleteNew"))
            QObject::connect(manager_.get(), &CComponentMgr::sigNewComponent,
                             [this](const QString& newOne) { delete manager_->component(newOne); });
        else if (verb == QLatin1String("switch"))
            Q_EMIT language_.sigCurrentLanguageChanged();
        else if (verb == QLatin1String("close"))
            close();
        else
            qFatal("unknown command %s", qPrintable(command));
    }

private:
    void makeManager()
    {
        manager_ = std::make_unique<CComponentMgr>(engine_.get());
        QObject::connect(manager_.get(), &CComponentMgr::sigNewComponent,
                         [](const QString& name, const QString& parent) {
                             print(QStringLiteral("new '%1' '%2'").arg(name, parent));
                         });
        QObject::connect(manager_.get(), &CComponentMgr::sigComponentsChanged,
                         [] { print(QStringLiteral("changed")); });
    }

    static void printComponent(const QString& label, QObject* object)
    {
        auto* component = static_cast<CComponentBase*>(object);
        print(label + QLatin1Char(' ') + (component == nullptr ? QStringLiteral("null") : component->name()));
    }

    QVariantList entries() const { return manager_->property("components").toList(); }

    void printComponents() const
    {
        QJsonArray array;
        for (const QVariant& entry : entries()) {
            QVariantMap map = entry.toMap();
            auto* object = map.value(QStringLiteral("component")).value<QObject*>();
            map[QStringLiteral("component")] =
                object == nullptr ? QStringLiteral("null") : object->property("name").toString();
            array.append(QJsonObject::fromVariantMap(map));
        }
        print(QStringLiteral("components ") +
              QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact)));
    }

    void close()
    {
        manager_.reset();
        print(QStringLiteral("closed"));
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
    TsanAnnotations::Annotated<QGuiApplication> application(argc, argv);
    Host host;
    const QStringList arguments = application.arguments().mid(1);
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("engine") || argument == QLatin1String("language"))
            host.prepare(argument);
        else
            host.execute(argument);
        std::fflush(stdout);
    }
    print(QStringLiteral("end"));
    return 0;
}

#include "component_host.moc"
