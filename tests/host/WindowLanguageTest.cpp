// The language of the window: every string comes from a catalogue, and the button changes all of them.
#include "tests/host/WindowTest.h"

#include "host/machine/Records.h"
#include "plugin/HostCall.h"
#include "recscan/FunctionTexts.h"
#include "tests/host/MachineText.h"
#include "tests/support/Answers.h"
#include "tests/support/Threads.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>
#include <QtQml/QQmlContext>
#include <QtTest/QTest>

namespace {

using host::MultiLanguage;

// Puts every translated string into brackets.
class Brackets : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* /*context*/, const char* source, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return QChar(0x27E6) + QString::fromUtf8(source) + QChar(0x27E7);
    }
};

// The text without the parts in brackets.
QString outsideBrackets(const QString& text)
{
    QString rest;
    int depth = 0;
    for (const QChar character : text) {
        if (character == QChar(0x27E6))
            ++depth;
        else if (character == QChar(0x27E7))
            --depth;
        else if (depth == 0)
            rest += character;
    }
    return rest;
}

// The agent's announcements, its answers, the parameters of its orders, the log and recommendations.
const QStringList kVerbatim = {"machineName",        "callArguments",        "callResult", "taskDetail",
                               "recommendationText", "recommendationButton", "logList"};

// Names, sizes, numbers and punctuation.
bool isData(const QString& text)
{
    static const QRegularExpression words(QRegularExpression::anchoredPattern(
        "(?:[\\d.,:%·›()/ ]+|[KMGT]B|[A-Z]:|NVMe|SATA|USB|SSD|GPT|MBR|NTFS|FAT32|FAT|"
        "exFAT|ReFS|Windows|Data|[A-Z][a-z]+(?:[A-Z][a-z]+)+|Task (?:Queued|NotValid)|"
        "https://example.org/)*"));
    return words.match(text).hasMatch();
}

class WindowLanguage : public WindowTest
{
protected:
    explicit WindowLanguage() : WindowTest(host::ThemeMode::Light) {}

    void SetUp() override
    {
        WindowTest::SetUp();
        scene.core().setServiceAddress("localhost:9090");
    }

    void TearDown() override
    {
        // The scan's thread must end before its owner is destroyed.
        EXPECT_TRUE(pumpUntil([&] { return !scene.link().isScanRunning(); }));
        WindowTest::TearDown();
    }

    // Every visible text, with the name of its item or of the nearest named ancestor.
    std::vector<std::pair<QString, QQuickItem*>> shown()
    {
        std::vector<std::pair<QString, QQuickItem*>> found;
        collectTexts(scene.window()->contentItem(), "window", found);
        return found;
    }

    static void collectTexts(QQuickItem* parent, const QString& name,
                             std::vector<std::pair<QString, QQuickItem*>>& found)
    {
        const QList<QQuickItem*> children = parent->childItems();
        for (QQuickItem* child : children) {
            const QString own = child->objectName().isEmpty() ? name : child->objectName();
            if (!child->isVisible() || kVerbatim.contains(own))
                continue;
            if (child->inherits("QQuickText") && !child->property("text").toString().isEmpty())
                found.emplace_back(own, child);
            collectTexts(child, own, found);
        }
    }

    // A row of each kind in both lists.
    void fillLists()
    {
        Q_EMIT bridge.sigAbout2CallFun("DeletePartition driveLetter=C");
        scene.core().orders().rejection(16, {{"driveLetter", "C"}});
        Q_EMIT bridge.sigAfterCallFun(answers::notValid, false);
        scene.core().orders().rejection(16, {{"driveLetter", "Q"}});
        orderHost(mainPage(), "doToolBox", ConnectionRule::Call, QVariant(99), QVariant(QVariantMap()));
        Q_EMIT bridge.sigAbout2CallFun("GetPartitionInfo driveLetter=C");
        Q_EMIT bridge.sigAfterCallFun("a partition with all of its details", false);
        scene.link().timeline().recordGateRejection("the words of the gate");
        scene.link().timeline().recordGateRejection("the words of the gate");
        Q_EMIT bridge.sigAbout2CallFun("");
        scene.core().orders().order(16, {{"driveLetter", "C"}});
        scene.core().orders().order(31, {{"driveLetter", "D"}, {"newLabel", "Data"}});
        EXPECT_TRUE(pumpUntil([&] { return !scene.core().status().isBusy(); }));
        host::Pace slow;
        slow.factor = 0.000001;
        simulation.setPace(slow);
        for (int times = 0; times < 3; ++times)
            scene.core().orders().order(15, {{"driveLetter", "D"}, {"fileSystem", "NTFS"}});
        scene.core().tasks()->cancel(5);
        EXPECT_TRUE(pumpUntil([&] { return texts("taskState").contains("0 %"); }));
        scene.core().openAddress("https://example.org/");
    }

    void openClone(const QString& rejection)
    {
        const QVariantList disks = host::diskRecords(*scene.core().machine());
        Q_EMIT bridge.sigCloneResult(QVariantMap{{"source", disks.at(1)},
                                                 {"destination", disks.at(2)},
                                                 {"errMsg", rejection},
                                                 {"cloneType", 2},
                                                 {"goToPageIndex", 2}});
    }

    void openConversion(int disk, int conversion)
    {
        const QVariantMap record = host::diskRecords(*scene.core().machine()).at(disk).toMap();
        Q_EMIT bridge.sigConvertResult(QVariantMap{{"funIdx", conversion}, {"info", record}});
    }

    void openPage(const char* member, const QVariantMap& task)
    {
        orderHost(mainPage(), member, ConnectionRule::Call, QVariant(task));
    }

    void language(const QString& code)
    {
        if (scene.language().language() != code)
            scene.language().setLanguage(code);
    }
};

class WindowBrackets : public WindowLanguage
{
protected:
    void SetUp() override
    {
        WindowLanguage::SetUp();
        QCoreApplication::installTranslator(&brackets_);
        Q_EMIT scene.language().sigCurrentLanguageChanged();
    }

    void TearDown() override
    {
        QCoreApplication::removeTranslator(&brackets_);
        WindowLanguage::TearDown();
    }

    void expectBrackets(const char* where)
    {
        EXPECT_EQ(outsideBrackets(scene.window()->title()), "") << where;
        for (const auto& [name, item] : shown()) {
            const QString text = item->property("text").toString();
            EXPECT_TRUE(isData(outsideBrackets(text)))
                << where << ": " << name.toStdString() << ": " << text.toStdString();
        }
    }

    Brackets brackets_;
};

TEST_F(WindowBrackets, EmptyLists_ShowTranslatedTextsOnly)
{
    expectBrackets("empty");
    EXPECT_GT(shown().size(), 20u);
}

TEST_F(WindowBrackets, MachineWithEveryFlag_ShowsTranslatedTextsOnly)
{
    host::Machine machine = testMachine();
    for (host::Disk& disk : machine.disks) {
        disk.isOffline = disk.isBad = disk.readonly = disk.isProtected = disk.isDynamic =
            disk.isStorageSpace = disk.isVirtualDisk = disk.isRemoveUsb = true;
        for (host::Partition& entry : disk.partitions)
            entry.isBoot = entry.isSystem = entry.gptEFI = entry.gptReserved = entry.gptRecovery =
                entry.isActive = entry.isHidden = entry.readonly = entry.isBad = entry.isLowSpace = true;
    }
    machine.partition("C")->bltState = 1;
    machine.partition("D")->bltState = 2;
    machine.partition("E")->bltState = 3;
    machine.partition("E")->isPrimary = false;
    machine.disk(2)->partitions.front().driveLetter.clear();
    machine.disk(2)->partitions.front().gptEFI = false;
    machine.disk(5)->partitions.clear();
    scene.core().backend().change(machine);
    expectBrackets("flags");
    const QStringList before = texts("details");
    press(Qt::Key_Tab);
    for (int disk = 0; disk < 6; ++disk) {
        for (int entry = 0; entry < 3; ++entry) {
            QMetaObject::invokeMethod(item("details")->parentItem()->parentItem(), "choose",
                                      Q_ARG(QVariant, disk), Q_ARG(QVariant, entry));
            expectBrackets("details");
        }
    }
    EXPECT_NE(texts("details"), before);
}

TEST_F(WindowBrackets, ListsOfTheAgentAndOfTasks_ShowTranslatedTextsOnly)
{
    fillLists();
    scene.core().setDialogOpen(true);
    expectBrackets("lists");
    EXPECT_EQ(texts("taskState").size(), 5);
    EXPECT_GE(texts("callReason").size(), 3);
    click(item("logButton"));
    expectBrackets("log");
}

TEST_F(WindowBrackets, Guides_ShowTranslatedTextsOnly)
{
    openClone("The destination is too small.");
    ASSERT_NE(awaited("guideRejection"), nullptr);
    expectBrackets("clone");
    for (int conversion = 0; conversion < 4; ++conversion) {
        openConversion(1, conversion);
        expectBrackets("conversion");
    }
    openPage("doprfunction", {{"driveLetter", "D"}});
    expectBrackets("recovery");
    openPage("doprfunction", {{"diskIndex", 1}});
    expectBrackets("recovery");
}

TEST_F(WindowBrackets, PagesThatCoverTheWindow_ShowTranslatedTextsOnly)
{
    for (const int disk : {0, 1, 4, 9}) {
        openPage("opendiskhealth", {{"diskIndex", disk}});
        ASSERT_NE(awaited("dialogTitle"), nullptr);
        expectBrackets("health");
    }
    for (const char* key : {"createToFile", "isBurn", "other"}) {
        openPage("dobmfunction", {{key, true}});
        expectBrackets("media");
    }
    const QVariant drive =
        host::diskRecords(*scene.core().machine()).at(1).toMap().value("partitions").toList().at(1);
    for (const int tool : {2, 3, 4, 5, 7, 9, 12}) {
        orderHost(mainPage(), "doToolBox", ConnectionRule::Call, QVariant(tool), drive);
        expectBrackets("toolbox");
    }
}

TEST_F(WindowBrackets, RecommendationOfAScan_IsTranslatedWithItsButtons)
{
    scene.link().scanNow();
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    EXPECT_EQ(outsideBrackets(text("recommendationText")), "");
    EXPECT_NE(text("recommendationText"), "");
    EXPECT_EQ(texts("recommendationButton"), QStringList({"⟦Accept⟧", "⟦Cancel⟧"}));
    expectBrackets("card");
}

TEST(Languages, AreEnglishFirstAndGerman)
{
    EXPECT_EQ(MultiLanguage::languages(), QStringList({"en", "de"}));
}

TEST(Languages, German_TranslatesEveryFunctionOfAReferral)
{
    const MultiLanguage german("de");
    int texts = 0;
    const auto expectGerman = [&](const FunctionText& function) {
        const QString text = QCoreApplication::translate("QObject", function.text);
        EXPECT_NE(text, function.text) << function.key;
        EXPECT_EQ(text.count('['), QString(function.text).count('[')) << function.key;
        ++texts;
    };
    for (const FunctionText& function : kOwnFunctions)
        expectGerman(function);
    for (const FunctionText& function : kAgentFunctions)
        expectGerman(function);
    EXPECT_EQ(texts, 42);
}

const char* const kRecommendations[] = {
    "Windows 10 support ends soon! To install Windows 11, convert your system disk to GPT first.",
    "Windows 10 support ends soon! Your device may not be compatible with Windows 11.",
    "Windows 10 support ends soon! Your PC is ready for Windows 11.",
    "We have detected an anomaly in the health status of disk %1. We recommend checking the disk health as "
    "soon as "
    "possible!",
    "Drive %1 has low space. We recommend using \"Smart Layout Adjust\" to quickly expand %2 drive space!",
    "Drive %1 has low space. We recommend using the \"Data Migration\" feature to free up more space on %2 "
    "drive!",
    "Drive %1 has low space. We recommend using \"Smart Layout Adjust\" to adjust the disk layout with one "
    "click!",
    "Due to incorrect partition table settings on disk %1, its space is not fully utilized. We recommend "
    "converting to "
    "GPT disk!",
    "We recommend converting the file system of the large external disk %1 to ExFAT for better performance "
    "and "
    "cross-platform accessibility! ",
    "Invalid or duplicate boot entries were found in the system boot menu. We recommend removing them with "
    "one click! ",
    "The %1 drive on the SSD is not 4K aligned. We recommend performing 4K alignment immediately to "
    "significantly "
    "improve its performance!",
    "For users with BitLocker encryption on %1 drive, we recommend creating a secure USB drive. In the event "
    "of a "
    "system boot failure, the secure USB drive can boot the computer and access data on the encrypted disk!",
    "The performance of this machine is significantly affected by the boot disk. We recommend replacing it "
    "with an SSD "
    "for better performance. Once you are ready with the SSD, use \"System Migration\" to easily transfer "
    "the system "
    "to the SSD! ",
    "A Raw partition was detected on the system. We recommend repairing the Raw partition as soon as "
    "possible to avoid "
    "permanent data loss!",
    "Drive %1 is locked by BitLocker. You can use BitLocker Key Finder to recover your BitLocker recovery "
    "key if you "
    "forget the password!",
    "Accept",
    "Cancel",
    "Convert today",
    "See upgrade options",
    "Learn more",
    "Got it"};

TEST(Languages, German_TranslatesEveryStringOfTheCases)
{
    const MultiLanguage german("de");
    for (const char* text : kRecommendations)
        EXPECT_NE(QCoreApplication::translate("QObject", text), text);
}

TEST(Languages, English_LeavesEveryStringOfTheLibraryUnchanged)
{
    const MultiLanguage english("en");
    for (const char* text : kRecommendations)
        EXPECT_EQ(QCoreApplication::translate("QObject", text), text);
}

TEST_F(WindowLanguage, Button_SwitchesEveryStringToGermanAndBack)
{
    fillLists();
    openClone("The destination is too small.");
    ASSERT_NE(awaited("guideRejection"), nullptr);
    const auto everyText = [&] {
        QStringList all{scene.window()->title()};
        for (const auto& [name, item] : shown())
            all.append(name + ": " + item->property("text").toString());
        return all;
    };
    const QStringList english = everyText();
    EXPECT_EQ(text("guideRejection"), "The destination is too small.");
    EXPECT_EQ(text("machineSummary"), "6 disks, 5.3 TB");

    click(item("languageButton"));
    EXPECT_EQ(scene.language().language(), "de");
    EXPECT_EQ(scene.window()->title(), "Sandbox-Host: test (Simulation)");
    EXPECT_EQ(text("scanButton"), "Jetzt prüfen");
    EXPECT_EQ(text("languageButton"), "Sprache");
    EXPECT_EQ(text("machineSummary"), "6 Datenträger, 5.3 TB");
    EXPECT_EQ(texts("diskName").value(1), "Datenträger 1");
    EXPECT_EQ(text("serviceBadge"), "Dienst auf localhost:9090");
    EXPECT_EQ(item("guidePane")->property("title"), "Klonen: Datenträger 1 auf Datenträger 2");
    EXPECT_EQ(text("guideRejection"), "Das Ziel ist zu klein.");
    EXPECT_TRUE(texts("callReason").contains("Das Laufwerk enthält das laufende System.")) << "callReason";
    EXPECT_TRUE(texts("callReason").contains("Kein Laufwerk hat den Buchstaben Q.")) << "callReason";
    EXPECT_TRUE(texts("taskError").contains("Das Laufwerk enthält das laufende System.")) << "taskError";
    EXPECT_TRUE(texts("callOutcome").contains("2-mal abgelehnt")) << "callOutcome";
    EXPECT_TRUE(texts("taskState").contains("abgebrochen")) << "taskState";

    click(item("languageButton"));
    EXPECT_EQ(scene.language().language(), "en");
    EXPECT_EQ(everyText(), english);
}

TEST_F(WindowLanguage, GermanScan_ShowsAGermanRecommendation)
{
    language("de");
    scene.link().scanNow();
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    EXPECT_EQ(
        text("recommendationText"),
        "Beim Zustand von Datenträger 1 wurde eine Auffälligkeit erkannt. Wir empfehlen, den Zustand des "
        "Datenträgers so bald wie möglich zu prüfen!");
    EXPECT_EQ(texts("recommendationButton"), QStringList({"Annehmen", "Abbrechen"}));
}

TEST_F(WindowLanguage, VisibleRecommendation_KeepsItsLanguage)
{
    scene.link().scanNow();
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    const QString english = text("recommendationText");
    EXPECT_TRUE(english.startsWith("We have detected an anomaly")) << english.toStdString();
    click(item("languageButton"));
    EXPECT_EQ(scene.language().language(), "de");
    EXPECT_EQ(text("recommendationText"), english);
    EXPECT_EQ(texts("recommendationButton"), QStringList({"Accept", "Cancel"}));
}

TEST_F(WindowLanguage, Dialog_ChangesItsLanguageAndStaysOpen)
{
    openPage("opendiskhealth", {{"diskIndex", 1}});
    ASSERT_TRUE(waitForText("dialogTitle", "Disk health: disk 1"));
    language("de");
    EXPECT_EQ(text("dialogTitle"), "Datenträgerzustand: Datenträger 1");
    EXPECT_TRUE(texts("factValue").contains("der Datenträger meldet Fehler"));
    EXPECT_EQ(text("dialogClose"), "Schließen");
    EXPECT_TRUE(isPopuped());
}

TEST_F(WindowLanguage, German_LeavesTheLogTheTranscriptAndTheAnswersEnglish)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("transcript");
    ASSERT_EQ(scene.core().transcript().open(file), "");
    language("de");
    openClone(QString());
    openConversion(1, 1);
    fillLists();
    QFile content(file);
    ASSERT_TRUE(content.open(QIODevice::ReadOnly));
    const QByteArray transcript = content.readAll();
    for (const char* text : {"\"title\":\"Clone: disk 1 to disk 2\"", "\"title\":\"Convert: disk 1 to MBR\"",
                             "\"text\":\"The disk is already an MBR disk.\"",
                             "\"error\":\"The drive holds the running system.\"", "\"state\":\"cancelled\""})
        EXPECT_TRUE(transcript.contains(text)) << text;
    QStringList log;
    for (int row = 0; row < scene.core().log()->rowCount(); ++row)
        log.append(scene.core().log()->index(row).data().toString().section(' ', 1));
    EXPECT_TRUE(log.contains("rejected DeletePartition driveLetter=\"Q\": No drive has the letter Q."))
        << log.join("\n").toStdString();
    EXPECT_TRUE(log.contains("guide opened: Clone: disk 1 to disk 2 (step 2)"));
    EXPECT_TRUE(log.contains("failed DeletePartition: The drive holds the running system."));
    const QVariantList disks = host::diskRecords(*scene.core().machine());
    auto* clone = scene.engine().rootContext()->contextProperty("clone").value<QObject*>();
    EXPECT_EQ(callHost<QString>(clone, "invalidInfo", ConnectionRule::Call, disks.at(0).toMap(),
                                disks.at(5).toMap(), 2, QVariantMap()),
              QString("The destination is too small."));
}

class WindowGermanLayout : public WindowLanguage, public testing::WithParamInterface<QSize>
{
};

// Titles, buttons and messages must not be elided; names of disks and partitions may be.
TEST_P(WindowGermanLayout, Texts_AreNotCutOff)
{
    static const QStringList mayBeCut = {"details",   "segmentTitle", "segmentSubtitle", "segmentFlags",
                                         "diskFlags", "taskError",    "busyBadge"};
    language("de");
    scene.window()->resize(GetParam());
    ASSERT_TRUE(
        pumpUntil([&] { return item("diskList")->window()->contentItem()->width() == GetParam().width(); }));
    const auto expectWhole = [&](const char* where) {
        scene.window()->grabWindow();
        const QRect window(QPoint(0, 0), GetParam());
        for (const auto& [name, item] : shown()) {
            const std::string text =
                name.toStdString() + ": " + item->property("text").toString().toStdString();
            if (mayBeCut.contains(name))
                continue;
            EXPECT_FALSE(item->property("truncated").toBool()) << where << ": " << text;
            EXPECT_TRUE(placeOf(item).left() >= 0 && placeOf(item).right() <= window.right())
                << where << ": " << text;
        }
    };
    expectWhole("empty");
    for (std::size_t disk = 0; disk < items("diskSize").size(); ++disk)
        EXPECT_LT(placeOf(items("diskSize")[disk]).right(), placeOf(items("diskBar")[disk]).left()) << disk;
    scene.core().setDialogOpen(true);
    fillLists();
    scene.link().scanNow();
    ASSERT_NE(awaited("recommendationCard"), nullptr);
    expectWhole("lists and recommendation");
    openClone("The destination has no place for a partition.");
    expectWhole("clone");
    openConversion(1, 3);
    expectWhole("conversion");
    openPage("opendiskhealth", {{"diskIndex", 4}});
    ASSERT_NE(awaited("dialogTitle"), nullptr);
    expectWhole("dialog");
}

INSTANTIATE_TEST_SUITE_P(Sizes, WindowGermanLayout, testing::Values(QSize(1280, 720), QSize(960, 600)),
                         [](const testing::TestParamInfo<QSize>& size) {
                             return std::to_string(size.param.width()) + "x" +
                                    std::to_string(size.param.height());
                         });

} // namespace
