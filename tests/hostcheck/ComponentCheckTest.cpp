// Each step at which loading a component can fail, with real libraries in a scratch application folder.
#include "hostcheck/ComponentCheck.h"

#include "tests/support/ScratchApplication.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using hostcheck::LoadReport;
using hostcheck::LoadStep;

const QString kSuffix = QStringLiteral(LIBRARY_SUFFIX);

class ComponentCheck : public testing::Test
{
protected:
    // Copies a fixture to a path without suffix in the application folder. Returns the full path.
    QString addLibrary(const QString& path, const QString& kind) const
    {
        const QString target = at(path);
        QDir().mkpath(QFileInfo(target).path());
        if (!QFile::copy(QStringLiteral(COMPONENT_FOLDER "/fixture_") + kind + kSuffix, target))
            throw std::runtime_error("cannot copy " + kind.toStdString());
        return target;
    }
    QString at(const QString& path) const
    {
        return application_.folder() + QLatin1Char('/') + path + kSuffix;
    }

    static void expectReport(const LoadReport& report, LoadStep step, const QString& path)
    {
        EXPECT_EQ(report.step, step);
        EXPECT_EQ(report.path, QDir::toNativeSeparators(path));
        const QString text = hostcheck::textOf(report);
        EXPECT_TRUE(text.contains(report.path)) << qPrintable(text);
        EXPECT_TRUE(text.contains(report.message)) << qPrintable(text);
        EXPECT_FALSE(text.contains(QLatin1Char('\n'))) << qPrintable(text);
    }

    ScratchApplication application_;
};

TEST_F(ComponentCheck, MissingLibrary_IsReportedWithItsPath)
{
    const LoadReport report = hostcheck::checkComponent("Absent");
    expectReport(report, LoadStep::FindFile, at("Absent"));
    EXPECT_EQ(report.name, "Absent");
    EXPECT_FALSE(report.message.isEmpty());
}

TEST_F(ComponentCheck, MissingLibraryOfAChild_IsSearchedInTheParentsFolder)
{
    addLibrary("Health", "Component");
    const LoadReport report = hostcheck::checkComponent("Health", "Disk");
    expectReport(report, LoadStep::FindFile, at("Disk/DiskHealth"));
    EXPECT_EQ(report.name, "DiskHealth");
}

TEST_F(ComponentCheck, LibraryWithAMissingDependency_IsReportedWithTheLoadersMessage)
{
    const QString path = addLibrary("Dependent", "Dependent");
    const LoadReport report = hostcheck::checkComponent("Dependent");
    expectReport(report, LoadStep::LoadFile, path);
    QLibrary loader(path);
    ASSERT_FALSE(loader.load());
    EXPECT_EQ(report.message, loader.errorString());
#ifdef Q_OS_LINUX
    // The loader of Windows does not name the dependency.
    EXPECT_TRUE(report.message.contains("libfixture_Needed.so")) << qPrintable(report.message);
#endif
}

TEST_F(ComponentCheck, FileThatIsNotALibrary_IsRejectedByTheLoader)
{
    ScratchApplication::write(at("Text"), "this is text\n");
    const LoadReport report = hostcheck::checkComponent("Text");
    expectReport(report, LoadStep::LoadFile, at("Text"));
    EXPECT_FALSE(report.message.isEmpty());
}

TEST_F(ComponentCheck, LibraryWithoutAFactory_IsReported)
{
    const QString path = addLibrary("NoFactory", "NoFactory");
    const LoadReport report = hostcheck::checkComponent("NoFactory");
    expectReport(report, LoadStep::FindFactory, path);
    EXPECT_EQ(report.message, "");
}

TEST_F(ComponentCheck, FactoryThatReturnsNull_IsReported)
{
    const QString path = addLibrary("Null", "NullFactory");
    testing::internal::CaptureStdout();
    const LoadReport report = hostcheck::checkComponent("Null");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "factory called\n");
    expectReport(report, LoadStep::CallFactory, path);
    EXPECT_EQ(report.message, "");
}

TEST_F(ComponentCheck, CompleteComponent_IsDeletedWithoutEngineAndInit)
{
    const QString path = addLibrary("One", "Component");
    testing::internal::CaptureStdout();
    const LoadReport report = hostcheck::checkComponent("One");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "created One\ndestroyed One\n");
    expectReport(report, LoadStep::Complete, path);
    EXPECT_EQ(report.message, "");
}

TEST_F(ComponentCheck, Texts_DifferByStep)
{
    QStringList texts;
    for (const LoadStep step : {LoadStep::Complete, LoadStep::FindFile, LoadStep::LoadFile,
                                LoadStep::FindFactory, LoadStep::CallFactory})
        texts.append(hostcheck::textOf({step, "Name", "/folder/Name.so", "the loader's message"}));
    EXPECT_EQ(texts.removeDuplicates(), 0);
    for (const QString& text : texts) {
        EXPECT_TRUE(text.contains("Name")) << qPrintable(text);
        EXPECT_TRUE(text.endsWith(". the loader's message")) << qPrintable(text);
    }
}

} // namespace
