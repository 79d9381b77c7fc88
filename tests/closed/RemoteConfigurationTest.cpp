// The stand-in for the remote configuration, with a file in a scratch application folder.
#include "closed/UIUtility/UIUtility.h"
#include "tests/support/ScratchApplication.h"

#include <gtest/gtest.h>

namespace {

class RemoteConfiguration : public testing::Test
{
protected:
    void configure(const QByteArray& json)
    {
        ScratchApplication::write(application_.folder() + QLatin1String("/remoteconfig.json"), json);
    }
    static std::string read(const char* key)
    {
        return UIUtility::instance()
            ->GetFireBaseConfigString(QString::fromLatin1(key), QStringLiteral("default"))
            .toStdString();
    }

private:
    ScratchApplication application_;
};

TEST_F(RemoteConfiguration, WithoutAFile_IsTheDefault)
{
    EXPECT_EQ(read("key"), "default");
}

TEST_F(RemoteConfiguration, StringOfTheKey_IsReturnedEvenIfItIsEmpty)
{
    configure("{\"key\": \"value\", \"empty\": \"\"}");
    EXPECT_EQ(read("key"), "value");
    EXPECT_EQ(read("empty"), "");
}

TEST_F(RemoteConfiguration, MissingKey_IsTheDefault)
{
    configure("{\"other\": \"value\"}");
    EXPECT_EQ(read("key"), "default");
    EXPECT_EQ(read("Other"), "default");
}

TEST_F(RemoteConfiguration, ValueThatIsNotAString_IsTheDefault)
{
    for (const char* value : {"1", "true", "null", "[\"value\"]", "{\"key\": \"value\"}"}) {
        configure(QByteArray("{\"key\": ") + value + "}");
        EXPECT_EQ(read("key"), "default") << value;
    }
}

TEST_F(RemoteConfiguration, FileThatIsNotAnObject_IsTheDefault)
{
    for (const char* content : {"", "key=value", "[\"key\"]", "{\"key\": \"value\""}) {
        configure(content);
        EXPECT_EQ(read("key"), "default") << content;
    }
}

TEST_F(RemoteConfiguration, File_IsReadOnEachCall)
{
    configure("{\"key\": \"first\"}");
    EXPECT_EQ(read("key"), "first");
    configure("{\"key\": \"second\"}");
    EXPECT_EQ(read("key"), "second");
}

} // namespace
