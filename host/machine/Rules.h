#pragma once

#include "host/machine/Machine.h"
#include "host/machine/Text.h"

#include <QtCore/QVariantMap>

namespace host {

/// The partition page's answer to the question whether it would carry out a function: empty for yes, else the
/// reason for the log. @p params are the keys of the order; `TestFunValid` is not looked at. A number that is
/// no function is refused.
Text refusal(const Machine& machine, int function, const QVariantMap& params);

/// What speaks against carrying out a function now, one of the page or of the host's own guides; empty if
/// nothing.
Text taskRefusal(const Machine& machine, int function, const QVariantMap& params);

/// The file system's name as the host spells it, empty if it cannot make one.
QString knownFileSystem(const QString& name);

/// Bytes of free space that begin where the partition ends.
qint64 freeBehind(const Disk& disk, const Partition& partition);

/// The free region that an order for a new partition names, null if there is none.
const Partition* namedRegion(const Machine& machine, const QVariantMap& params);

} // namespace host
