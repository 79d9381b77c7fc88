// The examples of the document, with the host that it names.
#include "tests/agent/SandboxHost.h"

#include <QtCore/QFile>

namespace {

/// The indented block after @p sentence, without its indentation.
QByteArray exampleAfter(const QByteArray& sentence)
{
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + QStringLiteral("/docs/zorcall.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray document = file.readAll();
    const int start = document.indexOf(sentence);
    EXPECT_GE(start, 0) << sentence.constData();
    const int block = document.indexOf("\n\n    ", start);
    QByteArray example;
    for (const QByteArray& line : document.mid(block + 2).split('\n')) {
        if (!line.startsWith("    "))
            break;
        example += line.mid(4) + '\n';
    }
    return example;
}

TEST(ZorcallDocument, Script_IsAcceptedByTheHostThatTheDocumentNames)
{
    SandboxHost host;
    EXPECT_EQ(zorcallWith({host.variable()}, words("--patient --table --script -"),
                          exampleAfter("\nA script, run with ")),
              (Ran{0,
                   "line  tool                                      answer\n"
                   "   1  ListAllDisks                              4 DiskInfo\n"
                   "   2  CreatePartition                           Task Queued\n"
                   "   3  ChangePartitionLabel                      Task Queued\n",
                   ""}));
}

TEST(ZorcallDocument, Examples_PrintWhatTheHostAnswers)
{
    SandboxHost host;
    const QByteArray examples = exampleAfter("\nThe host is `zorhost --machine desktop`.");
    for (const char* line : {"--table ListPartitionsOnDisk diskIndex=3", "WipeDisk disk=1"}) {
        const Ran ran = host.call(line);
        EXPECT_FALSE((ran.out + ran.err).isEmpty()) << line;
        EXPECT_TRUE(examples.contains('\n' + ran.out + ran.err)) << ran << examples.constData();
    }
}

} // namespace
