#include "win11/Win11Check.h"

#include "platform/Platform.h"
#include "win11/ProcessorLists.h"
#include "win11/ReadinessParsers.h"

#include <QtCore/QFile>
#include <QtCore/QProcessEnvironment>

namespace {

constexpr quint32 kFirmwareBios = 1;
constexpr quint32 kFirmwareUefi = 2;
constexpr quint32 kErrorInvalidFunction = 1;
constexpr quint64 kKibInGib = 1048576;
constexpr quint64 kMinMemoryGib = 4;
constexpr quint64 kMinVolumeGib = 64;

const QString kMachine = QStringLiteral("ROOT\\CIMV2");
const QString kTpm = QStringLiteral("ROOT\\CIMV2\\Security\\MicrosoftTPM");

std::optional<quint32> firmwareType(const Platform& platform)
{
    const WindowsVersion version = platform.windowsVersion();
    const bool old = version.major < 6 || (version.major == 6 && version.minor < 2);
    if (!old)
        return platform.firmwareType();
    return platform.firmwareVariableError() == kErrorInvalidFunction ? kFirmwareBios : kFirmwareUefi;
}

ProcessorFacts queryProcessor(const Platform& platform)
{
    // Cores and clock are not queried: a listed processor is accepted regardless of its speed.
    const auto processors = platform.wmiQuery(kMachine, QStringLiteral("SELECT * FROM Win32_Processor"),
                                              {QStringLiteral("Name"), QStringLiteral("AddressWidth")});
    const auto systems = platform.wmiQuery(kMachine, QStringLiteral("SELECT * FROM Win32_OperatingSystem"),
                                           {QStringLiteral("OSArchitecture")});
    return readProcessorFacts(processors, systems);
}

} // namespace

Win11Check::Win11Check(QObject* parent) : QObject(parent) {}

void Win11Check::setGptDisk(bool value)
{
    gptDisk = value;
    passed = value;
}

bool Win11Check::checkAll()
{
    using Check = void (Win11Check::*)();
    // The slow checks come last, so that an earlier failure skips them.
    constexpr Check checks[] = {&Win11Check::checkProcessor, &Win11Check::checkFirmware,
                                &Win11Check::checkMemory,    &Win11Check::checkDiskSize,
                                &Win11Check::checkTpm,       &Win11Check::checkDirectX,
                                &Win11Check::checkSecureBoot};
    tempDir =
        QProcessEnvironment::systemEnvironment().value(QStringLiteral("TEMP"), QString()) + QLatin1Char('\\');
    for (const Check check : checks) {
        (this->*check)();
        if (!passed)
            break;
    }
    return passed;
}

void Win11Check::checkProcessor()
{
    refreshProcessorLists();
    const ProcessorFacts facts = queryProcessor(Platform::instance());
    passed = facts.addressWidth == 64 && facts.systemWidth == 64 && isProcessorSupported(facts.name);
}

void Win11Check::checkFirmware()
{
    passed = firmwareType(Platform::instance()) == kFirmwareUefi;
}

void Win11Check::checkMemory()
{
    // Whole GiB; the division truncates.
    passed = Platform::instance().installedMemoryKib().value_or(0) / kKibInGib >= kMinMemoryGib;
}

void Win11Check::checkDiskSize()
{
    // Always this letter, whichever drive the system uses, and the size of the whole volume, not its free
    // space.
    const auto volume =
        Platform::instance().volumeGeometry(QByteArrayLiteral("C:")).value_or(VolumeGeometry());
    passed = (volume.sectorsPerCluster * volume.bytesPerSector * volume.clusters) >> 30 >= kMinVolumeGib;
}

void Win11Check::checkTpm()
{
    passed = isTpmReady(Platform::instance().wmiQuery(kTpm, QStringLiteral("SELECT * FROM Win32_TPM"),
                                                      {QStringLiteral("IsActivated_InitialValue"),
                                                       QStringLiteral("IsEnabled_InitialValue"),
                                                       QStringLiteral("SpecVersion")}));
}

void Win11Check::checkDirectX()
{
    const QString file = tempDir + QLatin1String("TVDxCheck.txt");
    passed = isDirectXReady(runHiddenCommand(QLatin1String("dxdiag /whql:off /t ") + file, file));
}

void Win11Check::checkSecureBoot()
{
    const QString file = tempDir + QLatin1String("TVSecBootCheck.txt");
    const QString command =
        QLatin1String("powershell -Command Confirm-SecureBootUEFI | Out-File -FilePath  ") + file;
    passed = isSecureBootKnown(runHiddenCommand(command, file));
}

QByteArray Win11Check::runHiddenCommand(const QString& command, const QString& outputFile)
{
    if (QFile::exists(outputFile))
        QFile::remove(outputFile);
    Platform::instance().runHidden(command);
    QFile file(outputFile);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
