#pragma once

#include "host/machine/Rejection.h"
#include "host/udisks/BlockIo.h"

#include <QtCore/QString>

namespace host {

/// Whether a copy of a volume of that type of the disk service can get a new identifier. True for an empty
/// type, which has no identifier.
bool canRenewIdentity(const QString& type);

/// Gives a volume a new random identifier, so that it can be attached together with its original. Runs the
/// tools of the file system on @p descriptor, which is open for writing, and waits for them. Any thread. The
/// result is an error; it is empty if @p control cancels the work, which ends the tools.
Rejection renewIdentity(const QString& type, int descriptor, const WorkControl& control);

} // namespace host
