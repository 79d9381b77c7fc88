#include "plugin/ComponentLibrary.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

QString componentLibraryPath(const QString& name, const QString& parent)
{
    QString folder = QCoreApplication::applicationDirPath();
    if (!parent.isEmpty())
        folder += QLatin1Char('/') + parent;
    const QString stem = QDir::toNativeSeparators(folder + QLatin1Char('/') + parent + name);
    const QString path = stem + QLatin1String(".dll");
#ifndef Q_OS_WIN
    if (!QFileInfo::exists(path))
        return stem + QLatin1String(".so");
#endif
    return path;
}

ComponentFactory componentFactory(QLibrary& library)
{
    return reinterpret_cast<ComponentFactory>(library.resolve("getInstance"));
}
