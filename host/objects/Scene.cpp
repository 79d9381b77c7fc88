#include "host/objects/Scene.h"

#include "host/objects/Pages.h"
#include "host/objects/WindowObjects.h"

#include <QtQml/QQmlContext>

#include <utility>

// Q_INIT_RESOURCE must be used in the global namespace.
static void registerPages()
{
    Q_INIT_RESOURCE(qml);
}

namespace host {

Scene::Scene(std::unique_ptr<Backend> backend, int automaticAnswer, ThemeMode theme, const QString& language)
    : language_(language),
      core_(std::move(backend)),
      disks_(core_.backend()),
      shownDisks_(disks_),
      theme_(theme),
      link_(core_, automaticAnswer)
{
    registerPages();
    registerWindowTypes();
    QQmlContext& context = *engine_.rootContext();
    publishPages(core_, context);
    context.setContextProperty(QStringLiteral("multilanguage"), &language_);
    context.setContextProperty(QStringLiteral("host"), &core_);
    context.setContextProperty(QStringLiteral("link"), &link_);
    context.setContextProperty(QStringLiteral("guide"), &core_.guideView());
    context.setContextProperty(QStringLiteral("confirmation"), &core_.orders().confirmation());
    context.setContextProperty(QStringLiteral("interruption"), &core_.interruption());
    context.setContextProperty(QStringLiteral("timeline"), &link_.timeline());
    context.setContextProperty(QStringLiteral("history"), &history_);
    context.setContextProperty(QStringLiteral("logView"), &logView_);
    context.setContextProperty(QStringLiteral("clients"), &core_.clients());
    context.setContextProperty(QStringLiteral("diskModel"), &disks_);
    context.setContextProperty(QStringLiteral("shownDisks"), &shownDisks_);
    context.setContextProperty(QStringLiteral("program"), &program_);
    context.setContextProperty(QStringLiteral("theme"), &theme_);
    context.setContextProperty(QStringLiteral("assistance"), &assistance_);
    const auto mark = [this] { disks_.setMarks(core_.guideView().marks()); };
    QObject::connect(&core_.guideView(), &GuideView::changed, &core_, mark);
    // After the disk model's own connection, so that its rows are those of the new machine.
    QObject::connect(&core_.backend(), &Backend::machineChanged, &disks_, mark);
    const auto showPendingChanges = [this] { showPending(); };
    QObject::connect(&core_.backend(), &Backend::machineChanged, &disks_, showPendingChanges);
    QObject::connect(&core_.orders(), &Orders::added, &disks_, showPendingChanges);
    QObject::connect(&core_.orders(), &Orders::ended, &disks_, showPendingChanges);
    QObject::connect(core_.tasks(), &TaskQueue::taskStarted, &disks_, showPendingChanges);
    engine_.load(QUrl(QStringLiteral("qrc:/sandbox/main.qml")));
    if (!engine_.rootObjects().isEmpty())
        connectWindow();
    QObject::connect(&language_, &MultiLanguage::sigCurrentLanguageChanged, &core_,
                     [this] { retranslate(); });
}

void Scene::showPending()
{
    disks_.setPending(
        pendingChanges(*core_.machine(), core_.orders().openOrders(), core_.tasks()->runningTask()));
}

// Translates the strings of QML and C++ again. A recommendation comes from the library and keeps its
// language.
void Scene::retranslate()
{
    engine_.retranslate();
    disks_.refresh();
    core_.retranslate();
    link_.timeline().retranslate();
}

void Scene::connectWindow()
{
    window_ = qobject_cast<HostWindow*>(engine_.rootObjects().first());
    if (window_ == nullptr)
        return;
    window_->setCore(&core_);
    QObject::connect(window_, &QWindow::visibleChanged, &core_.clients(), &AgentClients::setLookingUp);
    QObject::connect(&core_.interruption(), &InterruptionRequest::confirmedClose, window_, &QWindow::close);
    window_->findChild<MainPage*>()->setCore(&core_);
    window_->findChild<QmlExecuter*>()->setCore(&core_);
}

} // namespace host
