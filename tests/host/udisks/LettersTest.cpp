// Drive letters, and the file that remembers them.
#include "host/udisks/DriveLetters.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using host::DriveLetters;
using host::LetterOwner;
using host::StateFile;

class Letters : public testing::Test
{
protected:
    Letters() { qputenv("XDG_STATE_HOME", folder.path().toLocal8Bit()); }

    static DriveLetters open() { return DriveLetters(StateFile("letters.json")); }
    static DriveLetters opened(const std::vector<LetterOwner>& owners)
    {
        DriveLetters letters = open();
        letters.assign(owners);
        return letters;
    }
    QString path() const { return folder.filePath("zorhost/letters.json"); }
    void write(const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(path()).path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    LetterOwner one{"a.img{1}", "{1}"};
    LetterOwner two{"a.img{2}", "{2}"};
    LetterOwner three{"a.img{3}", "{3}"};
};

TEST_F(Letters, NewPartitions_GetTheFirstUnusedLettersFromD)
{
    const DriveLetters letters = opened({one, two});
    EXPECT_EQ(letters.letterOf("a.img{1}"), "D");
    EXPECT_EQ(letters.letterOf("a.img{2}"), "E");
}

TEST_F(Letters, LaterHost_GivesTheRememberedLettersFirst)
{
    opened({one, two});
    const DriveLetters letters = opened({three, two});
    EXPECT_EQ(letters.letterOf("a.img{2}"), "E");
    EXPECT_EQ(letters.letterOf("a.img{3}"), "D");
}

TEST_F(Letters, RememberedLetter_IsKeptFromANewPartitionBeforeIt)
{
    opened({two});
    const DriveLetters letters = opened({one, two});
    EXPECT_EQ(letters.letterOf("a.img{2}"), "D");
    EXPECT_EQ(letters.letterOf("a.img{1}"), "E");
}

TEST_F(Letters, ChangedLetter_IsRemembered)
{
    DriveLetters first = opened({one, two});
    EXPECT_FALSE(first.change("a.img{1}", "E"));
    EXPECT_FALSE(first.change("unknown", "Q"));
    EXPECT_TRUE(first.change("a.img{1}", "Q"));
    EXPECT_EQ(opened({one}).letterOf("a.img{1}"), "Q");
}

TEST_F(Letters, MissingPartition_KeepsItsLetterUntilItIsReleased)
{
    DriveLetters letters = opened({one, two});
    letters.assign({two, three});
    EXPECT_EQ(letters.letterOf("a.img{3}"), "F");
    letters.release({"a.img{1}"});
    letters.assign({{"a.img{4}", "{4}"}});
    EXPECT_EQ(letters.letterOf("a.img{4}"), "D");
    // The deleted partition is no longer in the file.
    EXPECT_EQ(opened({three, one}).letterOf("a.img{1}"), "D");
}

TEST_F(Letters, LetterThatTwoPartitionsHaveInTheFile_IsGivenOnce)
{
    write(R"({"{1}": "K", "{2}": "K"})");
    const DriveLetters letters = opened({one, two});
    EXPECT_EQ(letters.letterOf("a.img{1}"), "K");
    EXPECT_EQ(letters.letterOf("a.img{2}"), "D");
}

TEST_F(Letters, CopiesOfAnImage_HaveDifferentLetters)
{
    const DriveLetters letters = opened({one, {"b.img{1}", "{1}"}});
    EXPECT_EQ(letters.letterOf("a.img{1}"), "D");
    EXPECT_EQ(letters.letterOf("b.img{1}"), "E");
}

TEST_F(Letters, TwoHosts_KeepEachOthersEntries)
{
    DriveLetters first = opened({one});
    DriveLetters second = opened({two});
    EXPECT_TRUE(first.change("a.img{1}", "P"));
    EXPECT_TRUE(second.change("a.img{2}", "R"));
    const DriveLetters later = opened({one, two});
    EXPECT_EQ(later.letterOf("a.img{1}"), "P");
    EXPECT_EQ(later.letterOf("a.img{2}"), "R");
}

TEST_F(Letters, DamagedFile_IsReportedOnceAndReplaced)
{
    write("{\"{1}\": \"Q\"");
    DriveLetters letters = opened({one});
    EXPECT_EQ(letters.letterOf("a.img{1}"), "D");
    const auto problem = letters.takeProblem();
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->english(), "The file " + path() + " is damaged, so its content is ignored.");
    letters.assign({two});
    EXPECT_FALSE(letters.takeProblem());
    EXPECT_EQ(opened({one}).letterOf("a.img{1}"), "D");
    EXPECT_FALSE(opened({one}).takeProblem());
}

TEST_F(Letters, FileThatCannotBeWritten_IsReportedOnce)
{
    // A file in place of the folder: also root cannot write into it.
    QFile blocker(folder.filePath("zorhost"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    DriveLetters letters = opened({one});
    EXPECT_EQ(letters.letterOf("a.img{1}"), "D");
    const auto problem = letters.takeProblem();
    ASSERT_TRUE(problem);
    EXPECT_TRUE(problem->english().startsWith("The file " + path() + " cannot be written: "))
        << problem->english().toStdString();
    EXPECT_TRUE(letters.change("a.img{1}", "Q"));
    EXPECT_FALSE(letters.takeProblem());
}

TEST_F(Letters, EntryThatIsNotALetter_IsIgnored)
{
    write(R"({"{1}": "", "{2}": 7, "{3}": "*"})");
    const DriveLetters letters = opened({one, two, three});
    EXPECT_EQ(letters.letterOf("a.img{1}"), "D");
    EXPECT_EQ(letters.letterOf("a.img{2}"), "E");
    EXPECT_EQ(letters.letterOf("a.img{3}"), "F");
}

} // namespace
