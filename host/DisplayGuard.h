#pragma once

#include "host/Options.h"

#include <QtCore/QtGlobal>

namespace host {

/// Chooses Qt's platform: offscreen without a window and for a screenshot. Sets Options::headless if there is
/// no display. Must be called before the application object is created. Returns the error in one line if
/// --window was given and there is no display; otherwise empty.
QString choosePlatform(Options& options);

/// Exists while the application object is created. Qt prints several warnings and aborts if it cannot open
/// the display; the guard prints one line instead and ends the process with exit code 2. After a successful
/// start, its destructor passes the collected warnings to the previous message handler. Only one object at a
/// time.
class DisplayGuard
{
public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;

private:
    QtMessageHandler previous_;
};

} // namespace host
