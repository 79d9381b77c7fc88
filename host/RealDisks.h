#pragma once

#include "host/backend/Backend.h"

#include <QtCore/QStringList>

#include <memory>
#include <variant>

namespace host {

/// A back end for disk images, or an error sentence. @p images: files that exist. The images stay attached
/// until the back end is destroyed.
std::variant<std::unique_ptr<Backend>, QString> openRealDisks(const QStringList& images);

} // namespace host
