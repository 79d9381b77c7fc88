#include "host/PeerProcess.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QList>

#include <unistd.h>

namespace host {

namespace {

// Columns of /proc/net/tcp.
constexpr int kLocal = 1;
constexpr int kRemote = 2;
constexpr int kInode = 9;
// Longer than "socket:[" and an inode's number.
constexpr int kLinkLength = 64;

// The port of an address such as "0100007F:2382".
int portOf(const QByteArray& address)
{
    return address.mid(address.indexOf(':') + 1).toInt(nullptr, 16);
}

// The inode of the client's socket; empty if the table does not have it.
QByteArray inodeIn(const char* table, int clientPort, int servicePort)
{
    QFile file(QString::fromLatin1(table));
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> columns = line.simplified().split(' ');
        if (columns.size() > kInode && portOf(columns[kLocal]) == clientPort &&
            portOf(columns[kRemote]) == servicePort && columns[kInode] != "0")
            return columns[kInode];
    }
    return QByteArray();
}

bool holds(const QString& process, const QByteArray& link)
{
    const QDir folder(process + QLatin1String("/fd"));
    const QStringList descriptors = folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    char target[kLinkLength];
    for (const QString& descriptor : descriptors) {
        const QByteArray path = QFile::encodeName(folder.filePath(descriptor));
        const ssize_t length = readlink(path.constData(), target, sizeof target);
        if (length > 0 && QByteArray::fromRawData(target, static_cast<int>(length)) == link)
            return true;
    }
    return false;
}

// The program's file, because the kernel shortens the other name to 15 characters.
QString nameOf(const QString& process)
{
    const QString program = QFileInfo(process + QLatin1String("/exe")).symLinkTarget();
    if (!program.isEmpty())
        return QFileInfo(program).fileName();
    QFile file(process + QLatin1String("/comm"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

} // namespace

std::optional<PeerProcess> findPeerProcess(int clientPort, int servicePort)
{
    QByteArray inode = inodeIn("/proc/net/tcp", clientPort, servicePort);
    if (inode.isEmpty())
        inode = inodeIn("/proc/net/tcp6", clientPort, servicePort);
    if (inode.isEmpty())
        return std::nullopt;
    const QByteArray link = "socket:[" + inode + ']';
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& process : processes) {
        bool isNumber = false;
        const qint64 id = process.toLongLong(&isNumber);
        const QString folder = QLatin1String("/proc/") + process;
        if (isNumber && holds(folder, link))
            return PeerProcess{id, nameOf(folder)};
    }
    return std::nullopt;
}

} // namespace host
