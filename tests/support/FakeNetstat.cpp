#include "tests/support/FakeNetstat.h"

#include <QtCore/QFile>

#include <stdexcept>

FakeNetstat::FakeNetstat(const QByteArray& body) : previousPath_(qgetenv("PATH"))
{
    QFile script(folder_.filePath(QStringLiteral("netstat")));
    if (!script.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write the fake netstat");
    script.write("#!/bin/sh\ncd '" + QFile::encodeName(folder_.path()) + "'\n" + body);
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    script.close();
    qputenv("PATH", QFile::encodeName(folder_.path()) + ':' + previousPath_);
}

FakeNetstat::~FakeNetstat()
{
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

EmptyPath::EmptyPath() : previousPath_(qgetenv("PATH"))
{
    qputenv("PATH", QFile::encodeName(folder_.path()));
}

EmptyPath::~EmptyPath()
{
    qputenv("PATH", previousPath_);
}
