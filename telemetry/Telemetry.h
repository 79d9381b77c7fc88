#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

/// The category of every event.
extern const QString kTelemetryCategory;

/// Asks the host's window to send one event; the host decides what becomes of it. Any thread; off the
/// application thread it waits until the host's method has run. False if the host has no window or no such
/// method.
bool reportUserInfo(QVariant category, QVariant event, QVariant detail, QVariant extra);
