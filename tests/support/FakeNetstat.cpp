#include "tests/support/FakeNetstat.h"

#include "tests/support/Script.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

FakeNetstat::FakeNetstat(const QByteArray& body)
    : previousPath_(qgetenv("PATH")), previousCurrent_(QDir::currentPath())
{
    writeScript(folder_.filePath(QStringLiteral("netstat")),
                "cd '" + QFile::encodeName(folder_.path()) + "'\n" + body);
    qputenv("PATH", QFile::encodeName(folder_.path()) + QDir::listSeparator().toLatin1() + previousPath_);
#ifdef Q_OS_WIN
    // Windows searches the working directory, then the system's folders, then the path.
    QDir::setCurrent(folder_.path());
#endif
}

FakeNetstat::~FakeNetstat()
{
    QDir::setCurrent(previousCurrent_);
    qputenv("PATH", previousPath_);
}

QByteArray FakeNetstat::readFile(const QString& name) const
{
    QFile file(folder_.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray FakeNetstat::printing(const QByteArray& text)
{
    return "echo '" + text + "'\n";
}

HeldNetstat::HeldNetstat(const QByteArray& listing)
    : netstat_("echo > waiting\nwhile [ ! -e finish ] && [ -e waiting ]; do sleep 0.02; done\n" +
               FakeNetstat::printing(listing))
{
}

HeldNetstat::~HeldNetstat()
{
    finish();
}

bool HeldNetstat::isWaiting() const
{
    return QFile::exists(netstat_.folder() + QStringLiteral("/waiting"));
}

void HeldNetstat::finish() const
{
    QFile file(netstat_.folder() + QStringLiteral("/finish"));
    file.open(QIODevice::WriteOnly);
}

EmptyPath::EmptyPath() : previousPath_(qgetenv("PATH"))
{
    qputenv("PATH", QFile::encodeName(folder_.path()));
}

EmptyPath::~EmptyPath()
{
    qputenv("PATH", previousPath_);
}
