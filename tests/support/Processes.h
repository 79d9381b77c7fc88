#pragma once

#include <QtCore/QByteArray>

/// What a script of writeScript prints to name the process that its caller started: under Wine that is the
/// stand-in and not the shell below it.
constexpr char kOwnProcess[] = "${STAND_IN_PROCESS:-$$}";

/// Whether a process of that number, as kOwnProcess prints it, is running.
bool processRuns(const QByteArray& number);
/// Ends it; false if there is none.
bool endProcess(const QByteArray& number);
