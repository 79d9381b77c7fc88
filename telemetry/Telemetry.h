#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

/// The category of every event.
extern const QString kTelemetryCategory;

/// Asks the host's window to send one event. Any thread; off the application thread, waits until the host's
/// method has run. Returns false if the window or its method is missing.
bool reportUserInfo(QVariant category, QVariant event, QVariant detail, QVariant extra);
