// The conversion tools, and the check of a conversion, which no tool calls.
#include "tests/support/Answers.h"
#include "tests/tools/ToolRow.h"
#include "tools/ConversionTask.h"

#include <gtest/gtest.h>

namespace {

class Conversion : public testing::Test
{
protected:
    QString run(const std::function<QString(CZorHandle&)>& call)
    {
        QString answer;
        bench.onConnectionThread([&] { answer = call(bench.tools()); });
        return answer;
    }

    ToolBench bench;
};

TEST_F(Conversion, OfADiskThatDoesNotExist_IsQueuedWithTheBareRecord)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::ConvertDiskToGpt, 77)), answers::queued);
    EXPECT_EQ(bench.calls().last(),
              "aibridge.sigConvertResult@caller list[map{funIdx=int:0,info=map{diskIndex=int:77}}]");
}

TEST_F(Conversion, OfAnUnknownLetter_IsQueuedWithTheBareRecord)
{
    bench.build();
    EXPECT_EQ(run(tool(&CZorHandle::ConvertPartitionToFat, "q:")), answers::queued);
    EXPECT_EQ(bench.calls().last(),
              "aibridge.sigConvertResult@caller "
              "list[map{funIdx=int:5,info=map{diskIndex=int:-1,driveLetter=QString:\"Q:\"}}]");
}

TEST_F(Conversion, OfAPartition_LeavesAnOpenGuideOpen)
{
    bench.build();
    for (const char* method : {"ConvertPartitionToNtfs", "ConvertPartitionToFat", "ConvertPartitionToExfat"})
        EXPECT_EQ(run(toolRow(method).call), answers::queued);
    EXPECT_FALSE(bench.host().recorder().sequence().contains("window.closeGuide"));
}

TEST_F(Conversion, IsNeverCheckedWithTheHostsConverter)
{
    bench.host().spec("diskconverter").answer("isFunValid", false);
    bench.build();
    const QStringList methods = toolsThatCall("aibridge.sigConvertResult");
    ASSERT_FALSE(methods.isEmpty());
    for (const QString& method : methods)
        EXPECT_EQ(run(toolRow(method.toStdString()).call), answers::queued) << method.toStdString();
    for (const QString& call : bench.host().recorder().sequence())
        EXPECT_FALSE(call.startsWith("diskconverter."));
}

TEST_F(Conversion, WithoutABridge_EmitsNothing)
{
    EXPECT_FALSE(emitConvertTask(nullptr, 0, {}));
    EXPECT_FALSE(queuePartitionConversion(nullptr, 4, "E"));
    EXPECT_FALSE(queueDiskConversion(nullptr, 0, 1));
}

class ConvertTaskCheck : public Conversion
{
protected:
    static QVariantMap task(const QVariant& funIdx)
    {
        return {{"funIdx", funIdx}, {"info", QVariantMap{{"diskIndex", 4}}}};
    }

    bool valid(const QVariant& funIdx)
    {
        bool answer = false;
        bench.onConnectionThread(
            [&] { answer = isConvertTaskValid(bench.host().toolBridge(), task(funIdx)); });
        return answer;
    }
};

TEST_F(ConvertTaskCheck, CallsTheConverterAndForTheTwoTableConversionsItsSecondMethod)
{
    bench.build();
    const QString info = "map{diskIndex=int:4}";
    EXPECT_TRUE(valid(0));
    EXPECT_TRUE(valid(1));
    EXPECT_TRUE(valid(2));
    EXPECT_TRUE(valid(6));
    EXPECT_EQ(bench.calls(), QStringList({"diskconverter.isFunValid@app? list[int:0," + info + "]",
                                          "diskconverter.isMBR2GPTValid@app? list[" + info + "]",
                                          "diskconverter.isFunValid@app? list[int:1," + info + "]",
                                          "diskconverter.isGPT2MBRValid@app? list[" + info + "]",
                                          "diskconverter.isFunValid@app? list[int:2," + info + "]",
                                          "diskconverter.isFunValid@app? list[int:6," + info + "]"}));
}

TEST_F(ConvertTaskCheck, OnTheApplicationThread_RunsDirectly)
{
    bench.build();
    EXPECT_TRUE(isConvertTaskValid(bench.host().toolBridge(), task(1)));
    EXPECT_EQ(bench.host().recorder().sequence(),
              QStringList({"diskconverter.isFunValid", "diskconverter.isGPT2MBRValid"}));
}

TEST_F(ConvertTaskCheck, RejectedByTheFirstMethod_DoesNotCallTheSecond)
{
    bench.host().spec("diskconverter").answer("isFunValid", false);
    bench.build();
    EXPECT_FALSE(valid(0));
    EXPECT_EQ(bench.host().recorder().sequence(), QStringList({"diskconverter.isFunValid"}));
}

TEST_F(ConvertTaskCheck, AnObjectionOfTheSecondMethod_IsARejection)
{
    bench.host().spec("diskconverter").answer("isMBR2GPTValid", QVariant("too small"));
    bench.build();
    EXPECT_FALSE(valid(0));
    EXPECT_TRUE(valid(1));
}

TEST_F(ConvertTaskCheck, WithoutTheHostsConverter_IsTrue)
{
    EXPECT_TRUE(isConvertTaskValid(nullptr, task(0)));
    bench.host().without("diskconverter");
    bench.build();
    EXPECT_TRUE(valid(0));
}

TEST_F(ConvertTaskCheck, WithoutAnEngine_IsTrue)
{
    bench.build(ToolBench::Bridge::NoEngine);
    EXPECT_TRUE(valid(0));
}

TEST_F(ConvertTaskCheck, WithoutTheFirstMethod_IsTrueAndTheSecondIsNotCalled)
{
    bench.host().spec("diskconverter").remove("isFunValid").answer("isMBR2GPTValid", QVariant("too small"));
    bench.build();
    EXPECT_TRUE(valid(0));
    EXPECT_TRUE(bench.calls().isEmpty());
}

TEST_F(ConvertTaskCheck, WithoutTheSecondMethod_IsTrue)
{
    bench.host().spec("diskconverter").remove("isMBR2GPTValid").remove("isGPT2MBRValid");
    bench.build();
    EXPECT_TRUE(valid(0));
    EXPECT_TRUE(valid(1));
}

} // namespace
