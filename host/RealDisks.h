#pragma once

#include "host/backend/Backend.h"

#include <QtCore/QStringList>

#include <memory>
#include <variant>

namespace host {

/// A back end for disk images and disks, or an error sentence. @p images: regular files; they stay attached
/// until the back end is destroyed. @p devices: device files of whole disks.
std::variant<std::unique_ptr<Backend>, QString> openRealDisks(const QStringList& images,
                                                              const QStringList& devices);

} // namespace host
