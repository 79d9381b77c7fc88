#include "plugin/ComponentMgr.h"

#include "plugin/ComponentBase.h"
#include "plugin/ComponentLibrary.h"
#include "plugin/HostAccess.h"
#include "plugin/TestTime.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>
#include <QtCore/QPointer>
#include <QtCore/QSettings>
#include <QtCore/QVector>
#include <QtQml/QQmlApplicationEngine>

namespace {

const QString kObject = QStringLiteral("obj");
const QString kIndex = QStringLiteral("index");
constexpr int kLastGroup = 99;

CComponentBase* objectOf(const QVariant& record)
{
    return reinterpret_cast<CComponentBase*>(
        static_cast<quintptr>(record.toMap().value(kObject).toLongLong()));
}

} // namespace

CComponentMgr::CComponentMgr(QQmlApplicationEngine* theEngine, QObject* parent)
    : QObject(parent), engine(theEngine)
{
}

CComponentMgr::~CComponentMgr()
{
    // Destroying one component can destroy others.
    QVector<QPointer<CComponentBase>> alive;
    for (const QVariant& record : qAsConst(componentList))
        alive.append(objectOf(record));
    for (const QPointer<CComponentBase>& component : qAsConst(alive)) {
        if (component)
            component->Release();
        if (component)
            component->deleteLater();
    }
    componentList.clear();
}

void CComponentMgr::loadComponents(QStringList list)
{
    for (const QString& name : qAsConst(list))
        loadComponent(name);
    Q_EMIT sigComponentsChanged();
}

void CComponentMgr::loadComponents(QString componentName)
{
    QString folder = QCoreApplication::applicationDirPath();
    if (!componentName.isEmpty())
        folder += QLatin1Char('/') + componentName;
    const QString listFile = folder + QLatin1String("/components.ini");
    if (!QFileInfo::exists(listFile))
        return;
    // A file that names its own folder, directly or indirectly, would cause endless recursion.
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    if (activeFolders_.contains(canonical))
        return;
    activeFolders_.insert(canonical);

    QSettings settings(listFile, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    // Looked up once: a language object that one of these components publishes is connected only by
    // loadComponent.
    const QPointer<QObject> language = contextObject(engine, QStringLiteral("multilanguage"));
    for (int i = 1; i <= kLastGroup; ++i) {
        settings.beginGroup(QStringLiteral("COMPONENT%1").arg(i));
        if (settings.contains(QStringLiteral("name"))) {
            const QString name = settings.value(QStringLiteral("name")).toString();
            connectLanguage(language, loadComponent(name, componentName));
            loadComponents(name);
        }
        settings.endGroup();
    }
    activeFolders_.remove(canonical);
}

QObject* CComponentMgr::component(QString name)
{
    const QString wanted = name.toLower();
    for (const QVariant& record : qAsConst(componentList)) {
        CComponentBase* component = objectOf(record);
        if (component != nullptr && component->name().toLower() == wanted)
            return component;
    }
    return nullptr;
}

QObject* CComponentMgr::loadComponent(QString name, QString parentCom)
{
    CTestTime timer;
    const auto step = [&timer](int line) { timer.checkPoint("CComponentMgr::loadComponent", line); };
    QLibrary library(componentLibraryPath(name, parentCom));
    step(__LINE__);
    // The library stays loaded after its QLibrary is destroyed.
    const ComponentFactory factory = library.load() ? componentFactory(library) : nullptr;
    if (factory == nullptr)
        return nullptr;
    step(__LINE__);
    // A receiver of sigNewComponent can destroy the component.
    const QPointer<CComponentBase> component = factory();
    step(__LINE__);
    if (component == nullptr)
        return nullptr;
    step(__LINE__);
    component->setEngine(engine);
    component->init();
    step(__LINE__);
    registerComponent(component);
    connectLanguage(contextObject(engine, QStringLiteral("multilanguage")), component);
    step(__LINE__);
    Q_EMIT sigNewComponent(name, parentCom);
    step(__LINE__);
    return component;
}

QVariantList CComponentMgr::components() const
{
    QVariantList list;
    int id = 0;
    for (const QVariant& record : componentList) {
        CComponentBase* component = objectOf(record);
        if (component == nullptr)
            continue;
        QVariantMap entry;
        entry[QStringLiteral("id")] = id++;
        entry[QStringLiteral("name")] = component->name();
        entry[QStringLiteral("resProperty")] = component->resProperty();
        entry[QStringLiteral("text")] = component->displayName();
        entry[QStringLiteral("source")] = component->source();
        entry[QStringLiteral("component")] = QVariant::fromValue<QObject*>(component);
        entry[QStringLiteral("canLayout")] = component->canLayout();
        list.append(entry);
    }
    return list;
}

void CComponentMgr::registerComponent(CComponentBase* component)
{
    QVariantMap record;
    record[kObject] = static_cast<qlonglong>(reinterpret_cast<quintptr>(component));
    record[kIndex] = componentList.size();
    componentList.append(record);
    connect(component, &QObject::destroyed, this, &CComponentMgr::unregisterComponent);
}

void CComponentMgr::unregisterComponent(QObject* component)
{
    const auto address = static_cast<qlonglong>(reinterpret_cast<quintptr>(component));
    for (const QVariant& record : qAsConst(componentList)) {
        const QVariantMap map = record.toMap();
        if (map.value(kObject).toLongLong() != address)
            continue;
        // The index was recorded at registration, so after earlier removals it can belong to a different
        // entry.
        const int index = map.value(kIndex).toInt();
        if (index < componentList.size())
            componentList.removeAt(index);
        break;
    }
    // If a different entry was removed, the destroyed component's entry remains and must not keep the
    // pointer.
    for (QVariant& record : componentList) {
        QVariantMap map = record.toMap();
        if (map.value(kObject).toLongLong() == address) {
            map[kObject] = qlonglong(0);
            record = map;
        }
    }
}

void CComponentMgr::connectLanguage(QObject* language, QObject* component)
{
    if (language != nullptr && component != nullptr)
        connect(language, SIGNAL(sigCurrentLanguageChanged()), component, SLOT(onTranslate()));
}
