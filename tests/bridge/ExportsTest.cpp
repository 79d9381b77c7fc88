// The dynamic symbols of the built library. tests/windows/exports.txt is the list for Windows.
#include <QtCore/QLibrary>
#include <QtCore/QProcess>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <gtest/gtest.h>

#include <cxxabi.h>

#include <cstdlib>

namespace {

const char* const kExports[] = {
    "getInstance",
    // Construction and identity.
    "AIBridge::AIBridge()",
    "AIBridge::~AIBridge()",
    "vtable for AIBridge",
    // Compared by address in a host's dynamic_cast.
    "typeinfo for AIBridge",
    "typeinfo name for AIBridge",
    // Meta-object. moc hides qt_static_metacall, which is only called from inside the library.
    "AIBridge::staticMetaObject",
    "AIBridge::metaObject() const",
    "AIBridge::qt_metacast(char const*)",
    "AIBridge::qt_metacall(QMetaObject::Call, int, void**)",
    "AIBridge::tr(char const*, char const*, int)",
    "AIBridge::trUtf8(char const*, char const*, int)",
    // Component.
    "AIBridge::name() const",
    "AIBridge::init()",
    "AIBridge::canLayout() const",
    "AIBridge::setEngine(QQmlApplicationEngine*)",
    "AIBridge::Release()",
    // Signals.
    "AIBridge::sigRecScanResult(QVariant)",
    "AIBridge::sigCloneResult(QVariant)",
    "AIBridge::sigConvertResult(QVariant)",
    "AIBridge::sigAbout2CallFun(QString)",
    "AIBridge::sigAfterCallFun(QString, bool)",
    "AIBridge::sigClearRecScan()",
    // Invokable methods, and the slot for the end of the scan.
    "AIBridge::setDiskInfo(QList<QVariant>)",
    "AIBridge::isServerRunning()",
    "AIBridge::beginRecScan()",
    "AIBridge::stopRecScan()",
    "AIBridge::doRecOperation(QVariant)",
    "AIBridge::onRecScanFinished()",
    // Requests to the host's pages.
    "AIBridge::doFunFromAI(int, QMap<QString, QVariant>)",
    "AIBridge::isFunValidForAI(int, QMap<QString, QVariant>)",
    "AIBridge::doPrFunForAI(bool, QMap<QString, QVariant>)",
    "AIBridge::openDiskHealth(int)",
    "AIBridge::isBmFunValid(QMap<QString, QVariant>)",
    "AIBridge::doBmFunForAI(QMap<QString, QVariant>)",
    "AIBridge::isAlreadyPreOS()",
    // Inventory.
    "AIBridge::getDiskInfo(std::vector<DiskInfo, std::allocator<DiskInfo> >&)",
    "AIBridge::getPartitionInfo(std::vector<PartitionInfo, std::allocator<PartitionInfo> >&, int)",
    "AIBridge::getAllPartitionInfo(std::vector<PartitionInfo, std::allocator<PartitionInfo> >&)",
    "AIBridge::getPartitionInfo(PartitionInfo&, std::__cxx11::basic_string<char, std::char_traits<char>, "
    "std::allocator<char> > const&)",
    "AIBridge::parsePartitionInfo(QList<QVariant> const&)",
    "AIBridge::findOneUnallocatedPartition(int, long)",
    "AIBridge::getPartitionSize(std::__cxx11::basic_string<char, std::char_traits<char>, "
    "std::allocator<char> > "
    "const&)",
};

QString demangled(const QByteArray& symbol)
{
    int status = 0;
    char* text = abi::__cxa_demangle(symbol.constData(), nullptr, nullptr, &status);
    const QString result = QString::fromLatin1(status == 0 ? text : symbol.constData());
    std::free(text);
    return result;
}

// nm prints the symbol, its type and two numbers per line.
QSet<QString> builtExports()
{
    QProcess nm;
    nm.start(QStringLiteral(NM), {QStringLiteral("--dynamic"), QStringLiteral("--defined-only"),
                                  QStringLiteral("--format=posix"), QStringLiteral(AIBRIDGE_LIBRARY)});
    EXPECT_TRUE(nm.waitForFinished(-1)) << nm.errorString().toStdString();
    EXPECT_EQ(nm.exitCode(), 0) << nm.readAllStandardError().toStdString();
    QSet<QString> names;
    for (const QByteArray& line : nm.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            names.insert(demangled(line.split(' ').first()));
    }
    return names;
}

TEST(Exports, DynamicSymbols_AreExactlyTheFactoryAndTheListedMembers)
{
    QSet<QString> built = builtExports();
    for (const char* name : kExports)
        EXPECT_TRUE(built.remove(QString::fromLatin1(name))) << "missing: " << name;
    for (const QString& name : qAsConst(built))
        ADD_FAILURE() << "unlisted: " << name.toStdString();
}

TEST(Exports, TrAndTrUtf8_TranslateWhenResolvedByTheirSymbols)
{
    using Translate = QString (*)(const char*, const char*, int);
    QLibrary library(QStringLiteral(AIBRIDGE_LIBRARY));
    for (const char* symbol : {"_ZN8AIBridge2trEPKcS1_i", "_ZN8AIBridge6trUtf8EPKcS1_i"}) {
        const auto translate = reinterpret_cast<Translate>(library.resolve(symbol));
        ASSERT_NE(translate, nullptr) << symbol;
        EXPECT_EQ(translate("untranslated", nullptr, -1), QStringLiteral("untranslated"));
    }
}

} // namespace
