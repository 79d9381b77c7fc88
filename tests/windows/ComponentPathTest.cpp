// Where the manager looks for libraries, on a system whose separator is the other one.
#include "plugin/ComponentMgr.h"
#include "tests/support/ScratchApplication.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSignalSpy>
#include <QtQml/QQmlApplicationEngine>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

const char kOneComponent[] = "[COMPONENT1]\nname=%1\n";

class ComponentPath : public testing::Test
{
protected:
    ScratchApplication application_;
    QQmlApplicationEngine engine_;

    void install(const QString& place)
    {
        const QString path = application_.folder() + QLatin1Char('/') + place;
        QDir().mkpath(QFileInfo(path).path());
        ASSERT_TRUE(QFile::copy(qEnvironmentVariable("AIBRIDGE_BUILD_DIR") +
                                    QStringLiteral("/tests/test_windows_components/FixtureComponent.dll"),
                                path));
    }

    void list(const QString& folder, const QString& name)
    {
        ScratchApplication::write(application_.folder() + folder + QStringLiteral("/components.ini"),
                                  QString::fromLatin1(kOneComponent).arg(name).toUtf8());
    }

    static bool isLoaded(const QString& path)
    {
        return GetModuleHandleW(QDir::toNativeSeparators(path).toStdWString().c_str()) != nullptr;
    }
};

TEST_F(ComponentPath, TopLevel_IsTheNameInTheApplicationsFolder)
{
    install(QStringLiteral("Fixture.dll"));
    list(QString(), QStringLiteral("Fixture"));
    CComponentMgr manager(&engine_);
    manager.loadComponents();
    QObject* component = manager.component(QStringLiteral("FIXTURE"));
    ASSERT_NE(component, nullptr);
    EXPECT_EQ(component->objectName(), QStringLiteral("initialised"));
    EXPECT_TRUE(isLoaded(application_.folder() + QStringLiteral("/Fixture.dll")));
}

TEST_F(ComponentPath, WithAParent_IsTheParentsNameInFrontOfTheNameInTheParentsFolder)
{
    install(QStringLiteral("Outer/OuterFixture.dll"));
    list(QString(), QStringLiteral("Outer"));
    list(QStringLiteral("/Outer"), QStringLiteral("Fixture"));
    CComponentMgr manager(&engine_);
    QStringList news;
    QObject::connect(&manager, &CComponentMgr::sigNewComponent, &manager,
                     [&news](const QString& name, const QString& parent) { news << name + QLatin1Char('<') + parent; });
    manager.loadComponents();
    EXPECT_EQ(news, QStringList(QStringLiteral("Fixture<Outer")));
    EXPECT_TRUE(isLoaded(application_.folder() + QStringLiteral("/Outer/OuterFixture.dll")));
}

TEST_F(ComponentPath, WithAParent_TheBareNameInTheParentsFolderIsNotLookedAt)
{
    install(QStringLiteral("Outer/Fixture.dll"));
    CComponentMgr manager(&engine_);
    EXPECT_EQ(manager.loadComponent(QStringLiteral("Fixture"), QStringLiteral("Outer")), nullptr);
}

TEST_F(ComponentPath, LibraryWithoutTheFactory_GivesNothing)
{
    QDir().mkpath(application_.folder());
    wchar_t system[MAX_PATH] = {};
    GetSystemDirectoryW(system, MAX_PATH);
    ASSERT_TRUE(QFile::copy(QString::fromWCharArray(system) + QStringLiteral("\\version.dll"),
                            application_.folder() + QStringLiteral("/Other.dll")));
    CComponentMgr manager(&engine_);
    EXPECT_EQ(manager.loadComponent(QStringLiteral("Other")), nullptr);
}

} // namespace
