// The function table in docs/real-disks.md: one row for each function, in the order of the enumeration, and
// "no" exactly for those that real disks do not have.
#include "host/machine/Functions.h"
#include "host/udisks/OrderRules.h"

#include <QtCore/QFile>
#include <QtCore/QMetaEnum>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

namespace {

struct DocRow
{
    QString function;
    QString real; ///< "yes", "limited" or "no"
};

std::vector<DocRow> docRows()
{
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + "/docs/real-disks.md");
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    std::vector<DocRow> rows;
    for (const QString& line : text.mid(text.indexOf("\n## Functions\n")).split('\n')) {
        const QStringList cells = line.split(" | ");
        if (line.startsWith("| `") && cells.size() == 4)
            rows.push_back({cells[0].mid(2).remove('`'), cells[2]});
    }
    return rows;
}

TEST(FunctionsDoc, HasOneRowForEachFunctionInOrder)
{
    QStringList documented;
    for (const DocRow& row : docRows())
        documented << row.function;
    QStringList functions;
    const QMetaEnum all = QMetaEnum::fromType<host::Function>();
    for (int i = 0; i < all.keyCount(); ++i)
        functions << all.key(i);
    EXPECT_EQ(functions.join('\n').toStdString(), documented.join('\n').toStdString());
}

TEST(FunctionsDoc, MarksExactlyTheFunctionsThatRealDisksLackWithNo)
{
    for (const DocRow& row : docRows()) {
        const bool isAvailable = !host::unavailableRejection(host::functionNumber(row.function)).has_value();
        const QStringList verdicts = isAvailable ? QStringList{"yes", "limited"} : QStringList{"no"};
        EXPECT_TRUE(verdicts.contains(row.real)) << row.function.toStdString();
    }
}

} // namespace
