#pragma once

#include "tests/agent/ZorcallProcess.h"

/// Runs build/bin/zorcall with a terminal as its standard streams. Standard error is part of the output, and
/// each line ends with a line feed. @p variables: as for zorcallWith; TERM is xterm.
Ran zorcallAtTerminal(const QStringList& variables, const QStringList& arguments);

/// A word for a POSIX shell.
QString shellQuoted(const QString& word);
