#include "tests/windows/SystemTools.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

constexpr int kLimitMs = 60000;

// wmic writes UTF-16 with a byte order mark, the other programs 8-bit text.
QString decoded(const QByteArray& bytes)
{
    if (bytes.startsWith("\xff\xfe"))
        return QString::fromUtf16(reinterpret_cast<const ushort*>(bytes.constData()) + 1,
                                  bytes.size() / 2 - 1);
    return QString::fromLocal8Bit(bytes);
}

} // namespace

QString programOutput(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(kLimitMs)) {
        ADD_FAILURE() << program.toStdString() << " did not run: " << process.errorString().toStdString();
        return QString();
    }
    return decoded(process.readAllStandardOutput()).trimmed();
}

QStringList wmicRows(const QString& alias, const QString& property)
{
    QStringList rows = programOutput(QStringLiteral("wmic"), {alias, QStringLiteral("get"), property})
                           .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString& row : rows)
        row = row.trimmed();
    rows.removeAll(QString());
    if (rows.size() < 2) {
        ADD_FAILURE() << "wmic " << alias.toStdString() << " did not print a value of "
                      << property.toStdString();
        return {};
    }
    return rows.mid(1);
}

QString wmicValue(const QString& alias, const QString& property)
{
    return wmicRows(alias, property).value(0);
}

bool hasWmic()
{
    // SearchPath also searches the system's own folders.
    return SearchPathW(nullptr, L"wmic", L".exe", 0, nullptr, nullptr) != 0;
}
