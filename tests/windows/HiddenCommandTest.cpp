// Commands without a window: startup fields, waiting for the end, and a command that cannot start.
#include "platform/Platform.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class HiddenCommand : public testing::Test
{
protected:
    QString reportPath() const
    {
        return QDir::toNativeSeparators(folder_.filePath(QStringLiteral("report.txt")));
    }

    void run(int waitMs = 0)
    {
        Platform::instance().runHidden(QStringLiteral("\"%1\" \"%2\" %3")
                                           .arg(QDir::toNativeSeparators(program_), reportPath())
                                           .arg(waitMs));
    }

    QMap<QString, QString> report() const
    {
        QFile file(reportPath());
        QMap<QString, QString> values;
        if (!file.open(QIODevice::ReadOnly))
            return values;
        const QStringList lines =
            QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& line : lines)
            values[line.section(QLatin1Char('='), 0, 0)] = line.section(QLatin1Char('='), 1);
        return values;
    }

    const QString program_ = QCoreApplication::applicationDirPath() + QStringLiteral("/StartupReport.exe");
    QTemporaryDir folder_;
};

TEST_F(HiddenCommand, StartupFields_HideTheWindowAndRequest500By500Characters)
{
    run();
    const QMap<QString, QString> fields = report();
    EXPECT_EQ(fields[QStringLiteral("flags")], QStringLiteral("1")); // STARTF_USESHOWWINDOW
    EXPECT_EQ(fields[QStringLiteral("show")], QStringLiteral("0"));  // SW_HIDE
    EXPECT_EQ(fields[QStringLiteral("columns")], QStringLiteral("500"));
    EXPECT_EQ(fields[QStringLiteral("rows")], QStringLiteral("500"));
    for (const char* name : {"x", "y", "width", "height", "reserved", "console"})
        EXPECT_EQ(fields[QString::fromLatin1(name)], QStringLiteral("0")) << name;
}

TEST_F(HiddenCommand, CommandLine_IsPassedUnchanged)
{
    run();
    EXPECT_EQ(report()[QStringLiteral("line")],
              QStringLiteral("\"%1\" \"%2\" 0").arg(QDir::toNativeSeparators(program_), reportPath()));
}

TEST_F(HiddenCommand, RunHidden_ReturnsAfterTheProgramEnds)
{
    QElapsedTimer timer;
    timer.start();
    run(400);
    EXPECT_GE(timer.elapsed(), 400);
    EXPECT_FALSE(report().isEmpty());
}

TEST_F(HiddenCommand, MissingProgram_ReturnsWithoutWaiting)
{
    QElapsedTimer timer;
    timer.start();
    Platform::instance().runHidden(QStringLiteral("no_such_program.exe /x"));
    EXPECT_LT(timer.elapsed(), 10000);
}

} // namespace
