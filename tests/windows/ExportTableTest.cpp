// The export table of the built library.
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

#include <cxxabi.h>
#include <windows.h>

namespace {

// The names that a loaded library exports, in the order of its table.
QStringList exportsOf(HMODULE module)
{
    const auto* base = reinterpret_cast<const char*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& entry = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto* table = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(base + entry.VirtualAddress);
    const auto* names = reinterpret_cast<const DWORD*>(base + table->AddressOfNames);
    QStringList result;
    for (DWORD i = 0; i < table->NumberOfNames; ++i)
        result << QString::fromLatin1(base + names[i]);
    return result;
}

QString demangled(const QString& name)
{
    int status = 0;
    char* text = abi::__cxa_demangle(name.toLatin1().constData(), nullptr, nullptr, &status);
    const QString result = status == 0 ? QString::fromLatin1(text) : name;
    std::free(text);
    return result;
}

QStringList builtExports()
{
    const QString path = QDir::toNativeSeparators(qEnvironmentVariable("AIBRIDGE_BUILD_DIR") +
                                                  QStringLiteral("/bin/AIBridge.dll"));
    const HMODULE module =
        LoadLibraryExW(path.toStdWString().c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return module == nullptr ? QStringList() : exportsOf(module);
}

QStringList expectedExports()
{
    QFile file(qEnvironmentVariable("AIBRIDGE_SOURCE_DIR") + QStringLiteral("/tests/windows/exports.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString& line) { return line.startsWith(QLatin1Char('#')); }),
                lines.end());
    return lines;
}

TEST(ExportTable, Names_AreExactlyTheFactoryAndTheWholeClass)
{
    const QStringList built = builtExports();
    ASSERT_FALSE(built.isEmpty()) << "AIBridge.dll does not load: " << GetLastError();
    EXPECT_TRUE(built.contains(QStringLiteral("getInstance")));
    QSet<QString> names;
    for (const QString& name : built)
        names.insert(demangled(name));
    const QStringList expected = expectedExports();
    ASSERT_FALSE(expected.isEmpty());
    for (const QString& name : expected)
        EXPECT_TRUE(names.remove(name)) << "missing: " << name.toStdString();
    for (const QString& name : names)
        ADD_FAILURE() << "unlisted: " << name.toStdString();
}

} // namespace
