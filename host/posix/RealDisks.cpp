#include "host/RealDisks.h"

#include "host/udisks/DiskBackend.h"

#include <QtCore/QFileInfo>

namespace host {

std::variant<std::unique_ptr<Backend>, QString> openRealDisks(const QStringList& images)
{
    std::vector<DiskSource> sources;
    for (const QString& image : images) {
        const QFileInfo file(image);
        if (!file.isFile())
            return QStringLiteral("%1: not an existing regular file").arg(image);
        sources.push_back({file.canonicalFilePath(), true});
    }
    auto backend = DiskBackend::open(QDBusConnection::systemBus(), sources);
    if (const QString* error = std::get_if<QString>(&backend))
        return *error;
    return std::unique_ptr<Backend>(std::move(std::get<std::unique_ptr<DiskBackend>>(backend)));
}

} // namespace host
