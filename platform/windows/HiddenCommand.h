#pragma once

#include <QtCore/QString>

/// Starts a command line without a window and waits until it ends, at most 24.8 days.
void runHiddenProcess(const QString& command);
