#pragma once

#include <QtCore/QString>

/// Asks the host's window to open an address, an empty one included. The host's answer, false if it has no
/// window or no such method. Any thread; off the application thread it waits for that one.
bool openUrlOnHost(QString url);
