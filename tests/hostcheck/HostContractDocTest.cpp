// The tables in docs/host-contract.md match the index of hostcheck.
#include "hostcheck/HostIndex.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

namespace {

QString bareName(const hostcheck::Member& member)
{
    return QString::fromLatin1(member.signature).section(QLatin1Char('('), 0, 0);
}

// "object.member | missing | other signature" of each member in the index.
QStringList indexRows()
{
    QStringList rows;
    for (const hostcheck::Object& object : hostcheck::hostIndex()) {
        for (const hostcheck::Member& member : object.members) {
            const QString missing = member.effects.missing;
            const QString other = member.effects.otherSignature;
            rows << QStringLiteral("%1.%2 | %3 | %4")
                        .arg(object.name, bareName(member), missing,
                             other == missing ? QStringLiteral("The same.") : other);
        }
    }
    return rows;
}

QString document()
{
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + "/docs/host-contract.md");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

TEST(HostContractDoc, TableOfEffects_HasTheRowsOfTheIndex)
{
    QStringList rows;
    const QString section =
        document().section("\n## Effects of a missing or different member\n", 1).section("\n## ", 0, 0);
    for (QString line : section.split('\n')) {
        if (line.startsWith("| `"))
            rows << line.mid(2).chopped(2).remove('`');
    }
    EXPECT_EQ(rows.size(), 27);
    EXPECT_EQ(rows.join('\n').toStdString(), indexRows().join('\n').toStdString());
}

TEST(HostContractDoc, TablesOfMembers_ListEachMemberOfTheIndex)
{
    const QString section = document().section("\n## Members of the host\n", 1).section("\n## ", 0, 0);
    QString tables;
    for (const QString& line : section.split('\n')) {
        if (line.startsWith("| "))
            tables += line + '\n';
    }
    for (const hostcheck::Object& object : hostcheck::hostIndex()) {
        for (const hostcheck::Member& member : object.members) {
            const QRegularExpression name("`[^`]*\\b" + bareName(member) + "\\b[^`]*`");
            EXPECT_TRUE(name.match(tables).hasMatch()) << qPrintable(bareName(member));
        }
    }
}

} // namespace
