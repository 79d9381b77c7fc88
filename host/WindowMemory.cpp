#include "host/WindowMemory.h"

#include "host/objects/Theme.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <QtCore/QVariant>
#include <QtGui/QWindow>

#include <optional>

namespace host {

namespace {

const QString kWidth = QStringLiteral("window/width");
const QString kHeight = QStringLiteral("window/height");
const QString kMaximized = QStringLiteral("window/maximized");
const QString kTheme = QStringLiteral("window/theme");

// To open a pipe would block.
bool isUsable(const QString& file)
{
    return !QFileInfo::exists(file) || QFileInfo(file).isFile();
}

QVariantMap readAll(const QString& file)
{
    QVariantMap values;
    if (!isUsable(file))
        return values;
    const QSettings settings(file, QSettings::IniFormat);
    for (const QString& key : {kWidth, kHeight, kMaximized, kTheme}) {
        if (settings.contains(key))
            values.insert(key, settings.value(key));
    }
    return values;
}

} // namespace

QString WindowMemory::userFile()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("zorhost"),
                     QStringLiteral("zorhost"))
        .fileName();
}

WindowMemory::WindowMemory(const QString& file, QWindow& window, Theme& theme, QObject* parent)
    : QObject(parent), file_(file), window_(window), theme_(theme)
{
}

void WindowMemory::restore(const QSize& available, bool keepsTheme)
{
    const QVariantMap values = readAll(file_);
    const QSize size(values.value(kWidth).toInt(), values.value(kHeight).toInt());
    if (!size.isEmpty())
        window_.resize(size.boundedTo(available).expandedTo(window_.minimumSize()));
    if (values.value(kMaximized).toString() == QLatin1String("true"))
        window_.setWindowState(Qt::WindowMaximized);
    const std::optional<ThemeMode> mode = themeNamed(values.value(kTheme).toString());
    if (mode.has_value() && !keepsTheme)
        theme_.setMode(*mode);
    connect(&theme_, &Theme::modeChanged, this, [this] { write({{kTheme, theme_.modeName()}}); });
}

bool WindowMemory::save()
{
    const bool maximized = window_.windowStates().testFlag(Qt::WindowMaximized);
    QVariantMap values{{kMaximized, maximized}};
    // The size of a maximized window is that of the screen.
    if (!maximized && !window_.windowStates().testFlag(Qt::WindowFullScreen)) {
        values.insert(kWidth, window_.width());
        values.insert(kHeight, window_.height());
    }
    return write(values);
}

bool WindowMemory::write(const QVariantMap& values)
{
    if (!isUsable(file_))
        return false;
    const QVariantMap present = readAll(file_);
    QSettings settings(file_, QSettings::IniFormat);
    for (auto it = values.begin(); it != values.end(); ++it) {
        if (present.value(it.key()).toString() != it->toString())
            settings.setValue(it.key(), *it);
    }
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace host
