#include "plugin/ComponentBase.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QResource>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlContext>

CComponentBase::CComponentBase(QObject* parent) : QObject(parent) {}

QString CComponentBase::displayName() const
{
    return name();
}

QString CComponentBase::icon() const
{
    return QLatin1String("qrc:/res/") + name().toLower() + QLatin1String("_icon.svg");
}

QString CComponentBase::reservedText() const
{
    return QString();
}

QString CComponentBase::source() const
{
    return QLatin1String("qrc:/qml/") + name() + QLatin1String(".qml");
}

void CComponentBase::init()
{
    loadResource(name());
}

bool CComponentBase::canLayout() const
{
    return true;
}

QVariantList CComponentBase::reservedList() const
{
    return QVariantList();
}

void CComponentBase::loadResource(QString resourceName)
{
    const QString folder = QDir(QCoreApplication::applicationDirPath()).absolutePath();
    QResource::registerResource(folder + QLatin1Char('/') + resourceName + QLatin1String(".rcc"), QString());
}

void CComponentBase::setEngine(QQmlApplicationEngine* engine)
{
    engine_.store(engine);
    if (engine == nullptr)
        return;
    engine->rootContext()->setContextProperty(name().toLower(), this);
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
}

QQmlApplicationEngine* CComponentBase::engine() const
{
    return engine_.load();
}

QVariantMap CComponentBase::resProperty() const
{
    return QVariantMap();
}

void CComponentBase::Release() {}

void CComponentBase::retranslate() {}

void CComponentBase::onTranslate()
{
    Q_EMIT sigDisplayNameChanged();
    retranslate();
}
