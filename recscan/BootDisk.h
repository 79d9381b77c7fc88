#pragma once

#include <QtCore/QVariantMap>

class AIBridge;

/// The host's record of the disk that the running system starts from; empty if the host does not tell. The
/// host's method runs on the calling thread.
QVariantMap getBootDisk(const AIBridge* bridge);

/// True if that record says so.
bool isBootDiskGpt(const AIBridge* bridge);
