#pragma once

#include "host/objects/Theme.h"
#include "host/simulation/Pace.h"
#include "manual/Manual.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace host {

/// The options of the command line.
struct Options
{
    QString machine = QStringLiteral("desktop"); ///< a file, the name of a shipped machine, or "system"
    QStringList images;                          ///< disk images to work on instead of a machine
    QStringList devices;                         ///< device files of disks to work on, likewise
    bool unattended = false;                     ///< orders on devices need no confirmation
    bool headless = false;
    bool window = false; ///< a missing display is an error
    QString agent;       ///< command to start once the service answers; empty: no agent
    bool exitWithAgent = false;
    int answer = -1; ///< button that answers a recommendation; -1: the user answers
    bool scan = false;
    QString scanState; ///< folder for the state of scans; empty: a scratch folder
    std::optional<bool> win11;
    QString language = QStringLiteral("en"); ///< of the window and of recommendations
    std::optional<ThemeMode> theme;          ///< without a value: the one of the last run, or the system's
    std::optional<QSize> size; ///< of the window, in logical pixels; without a value: as in the last run
    QString screenshot;        ///< file for a picture of the window; empty: no picture
    /// Milliseconds after which a dialog is closed. Without a value: 1500 without a window, never with one.
    std::optional<int> click;
    bool checkHost = false;
    Pace pace;                            ///< speed of tasks
    std::vector<PlannedFailure> failures; ///< tasks that must fail
    bool startGuides = false;             ///< starts the work of each guide as it opens
    QString transcript;                   ///< file for the events; empty: no transcript
    QString save;                         ///< file for the machine at the end; empty: not saved
    bool verbose = false;                 ///< shows debug messages
    bool help = false;
    bool version = false;
    QString error; ///< error in the command line, one line; empty if valid

    bool hasRealDisks() const { return !images.isEmpty() || !devices.isEmpty(); }
};

/// @p arguments: without the program's name.
Options readOptions(const QStringList& arguments);

/// The description of the program.
manual::Manual programManual();

/// The text of --help.
QString helpText();

/// The file for the option --machine: the path itself, which can be a pipe, or the shipped machine of that
/// name in @p machinesFolder. Empty if neither exists.
QString machineFile(const QString& machine, const QString& machinesFolder);

} // namespace host
