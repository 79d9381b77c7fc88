#pragma once

#include <QtCore/QString>

/// Starts a command line without a window and waits for its end, at most 24.8 days.
void runHiddenProcess(const QString& command);
