// Untrusted files and program output: state, configuration, lists, and the output of commands.
#include "fuzz/Fuzz.h"
#include "plugin/ComponentMgr.h"
#include "recscan/Referral.h"
#include "recscan/ScanStateFile.h"
#include "service/AIFuncallThread.h"
#include "service/PortSearch.h"
#include "tests/support/ScratchApplication.h"
#include "win11/ProcessorLists.h"
#include "win11/ReadinessParsers.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QMap>

namespace {

ScratchApplication& application()
{
    static ScratchApplication scratch;
    return scratch;
}

// Settings are read again only if the file's size or time differs, so each file gets its own time.
void write(const QString& path, const std::string& content)
{
    static qint64 age = 0;
    QFile file(path);
    require(file.open(QIODevice::WriteOnly), "the scratch folder is writable");
    file.write(content.data(), static_cast<qint64>(content.size()));
    file.flush();
    file.setFileTime(QDateTime::fromMSecsSinceEpoch(++age * 1000), QFileDevice::FileModificationTime);
}

void readState(Bytes input)
{
    const QString path = application().folder() + QLatin1String("/recscan.info");
    write(path, input.rest());
    const ScanState state = readScanState();
    writeScanState(state);
    const ScanState again = readScanState();
    require(again.nextCaseIndex == state.nextCaseIndex && again.referralDone == state.referralDone,
            "a saved state reads back unchanged");
    QFile::remove(path);
}

void readPages(Bytes input)
{
    write(application().current() + QLatin1String("/seo2fun.json"), input.rest());
    QMap<QString, QString> functions;
    loadSeoToFun(functions);
    for (const QString& key : qAsConst(functions))
        recommendFunction(key);
}

void readLists(Bytes input)
{
    const QString name = QString::fromStdString(input.text(input.byte()));
    const std::string list = input.text(input.number(2));
    for (const char* file : {"AMD", "Intel", "Qualcomm"})
        write(checkerFilePath(QStringLiteral("SupportedProcessors%1.txt").arg(QLatin1String(file))), list);
    write(checkerFilePath(QStringLiteral("win11_cpu_whitelist.txt")), input.rest());
    if (isProcessorSupported(name))
        require(!name.isEmpty(), "no list contains a processor without a name");
}

void readPrinted(Bytes input)
{
    const QByteArray text = QByteArray::fromStdString(input.rest());
    if (isDirectXReady(text))
        require(QByteArray(text).replace(" ", "").contains("DDIVersion:12"),
                "a ready result requires DDI version 12");
    isSecureBootKnown(text);
    int first = 0;
    int second = 0;
    pickFreePorts(text, &first, &second);
    require((first == 0 || first >= 9090) && (second == 0 || second > first), "the ports are in order");
    require(first == 0 || !text.contains(':' + QByteArray::number(first)), "the port is not in use");
}

void readComponents(Bytes input)
{
    write(application().folder() + QLatin1String("/components.ini"), input.rest());
    CComponentMgr manager;
    manager.loadComponents(QString());
    require(manager.components().isEmpty(), "no file loads a missing component");
}

void readConfiguration(Bytes input)
{
    write(application().folder() + QLatin1String("/config.ini"), input.rest());
    AIFuncallThread::configuredAddress();
}

} // namespace

void fuzzOne(Bytes input)
{
    using Reader = void (*)(Bytes);
    static const Reader readers[] = {readState,   readPages,      readLists,
                                     readPrinted, readComponents, readConfiguration};
    application().write(checkerFilePath(QStringLiteral("there")), "");
    readers[input.byte() % std::size(readers)](input);
}
