#include "tests/windows/OtherRoad.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace {

constexpr int kLimitMs = 60000;

// wmic writes 16-bit text with a mark at its front, the others 8-bit text.
QString decoded(const QByteArray& bytes)
{
    if (bytes.startsWith("\xff\xfe"))
        return QString::fromUtf16(reinterpret_cast<const ushort*>(bytes.constData()) + 1,
                                  bytes.size() / 2 - 1);
    return QString::fromLocal8Bit(bytes);
}

} // namespace

QString systemSays(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(kLimitMs)) {
        ADD_FAILURE() << program.toStdString() << " did not run: " << process.errorString().toStdString();
        return QString();
    }
    return decoded(process.readAllStandardOutput()).trimmed();
}

QString wmicSays(const QString& alias, const QString& property)
{
    const QStringList lines = systemSays(QStringLiteral("wmic"), {alias, QStringLiteral("get"), property})
                                  .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (lines.size() < 2) {
        ADD_FAILURE() << "wmic " << alias.toStdString() << " says nothing of " << property.toStdString();
        return QString();
    }
    return lines.at(1).trimmed();
}
