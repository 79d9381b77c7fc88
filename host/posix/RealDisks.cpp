#include "host/RealDisks.h"

#include "host/udisks/DiskBackend.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <sys/stat.h>

namespace host {

namespace {

bool isBlockDevice(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISBLK(status.st_mode);
}

QString imageProblem(const QString& image)
{
    if (isBlockDevice(image))
        return QStringLiteral("%1: a block device; use --device").arg(image);
    return QFileInfo(image).isFile() ? QString()
                                     : QStringLiteral("%1: not an existing regular file").arg(image);
}

QString deviceProblem(const QString& device)
{
    if (isBlockDevice(device))
        return QString();
    return QFileInfo(device).isFile() ? QStringLiteral("%1: a regular file; use --image").arg(device)
                                      : QStringLiteral("%1: not an existing block device").arg(device);
}

// The first error; empty on success.
QString addSources(std::vector<DiskSource>& sources, const QStringList& files, bool areImages)
{
    for (const QString& name : files) {
        const QString problem = areImages ? imageProblem(name) : deviceProblem(name);
        if (!problem.isEmpty())
            return problem;
        const QString path = QFileInfo(name).canonicalFilePath();
        for (const DiskSource& source : sources) {
            if (source.file == path)
                return QStringLiteral("%1: named twice").arg(name);
        }
        sources.push_back({path, areImages});
    }
    return QString();
}

} // namespace

std::variant<std::unique_ptr<Backend>, QString> openRealDisks(const QStringList& images,
                                                              const QStringList& devices)
{
    std::vector<DiskSource> sources;
    QString error = addSources(sources, images, true);
    if (error.isEmpty())
        error = addSources(sources, devices, false);
    if (!error.isEmpty())
        return error;
    auto backend = DiskBackend::open(QDBusConnection::systemBus(), sources);
    if (const QString* problem = std::get_if<QString>(&backend))
        return *problem;
    return std::unique_ptr<Backend>(std::move(std::get<std::unique_ptr<DiskBackend>>(backend)));
}

} // namespace host
