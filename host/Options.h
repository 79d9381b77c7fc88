#pragma once

#include "host/objects/Pace.h"
#include "host/objects/Theme.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace host {

/// What the command line asks for.
struct Options
{
    QString machine = QStringLiteral("laptop"); ///< a file, the name of a shipped machine, or "system"
    bool headless = false;
    QString agent; ///< command to start once the service answers; empty for none
    bool exitWithAgent = false;
    int answer = -1; ///< button that answers a recommendation; -1 leaves it to the user
    bool scan = false;
    std::optional<bool> win11;
    QString language = QStringLiteral("en"); ///< of the window and of recommendations
    ThemeMode theme = ThemeMode::System;
    QString screenshot; ///< file for a picture of the window; empty for none
    /// A dialog is clicked away after so many milliseconds; without a value at once where there is no window
    /// that a user could click, and never where there is.
    std::optional<int> click;
    bool checkHost = false;
    Pace pace;                            ///< how fast tasks run
    std::vector<PlannedFailure> failures; ///< tasks that are to fail
    bool startGuides = false;             ///< starts what a guide stands before as it opens
    QString transcript;                   ///< file for what happens; empty for none
    QString save;                         ///< file for the machine at the end; empty for none
    bool verbose = false;                 ///< shows debug messages
    bool help = false;
    QString error; ///< what is wrong with the command line, one line; empty if nothing
};

/// @p arguments without the program's name.
Options readOptions(const QStringList& arguments);

/// The text of --help.
QString helpText();

/// The file that the option --machine means: the path itself, else the shipped machine of that name in
/// @p machinesFolder. Empty if there is neither.
QString machineFile(const QString& machine, const QString& machinesFolder);

} // namespace host
