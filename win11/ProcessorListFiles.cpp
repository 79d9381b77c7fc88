// Paths of the processor lists and their download.
#include "closed/UIUtility/UIUtility.h"
#include "win11/ListScript.h"
#include "win11/ProcessorLists.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QThread>

#include <array>

namespace {

constexpr unsigned long kPauseMs = 100;

const QString kWhitelist = QStringLiteral("win11_cpu_whitelist.txt");

struct Vendor
{
    const char* word; ///< substring of the processor's name
    const char* file;
};

// Tried in this order; the first match counts.
const std::array<Vendor, 3> kVendors = {{{"AMD", "SupportedProcessorsAMD.txt"},
                                         {"Intel", "SupportedProcessorsIntel.txt"},
                                         {"Qualcomm", "SupportedProcessorsQualcomm.txt"}}};

QString applicationFolder()
{
    return QDir(QCoreApplication::applicationDirPath()).absolutePath();
}

QString configured(const QString& key, const QString& defaultText)
{
    return UIUtility::instance()->GetFireBaseConfigString(key, defaultText);
}

QString listAddress(const QString& manufacturer)
{
    const QString builtIn =
        QStringLiteral("https://learn.microsoft.com/en-us/windows-hardware/design/minimum/"
                       "supported/windows-11-24h2-supported-%1-processors");
    return configured(QStringLiteral("url_win11_cpulist_%1").arg(manufacturer), builtIn.arg(manufacturer));
}

void fetchList(const QString& manufacturer, const QString& script, int timeoutMs)
{
    const QString address = listAddress(manufacturer);
    const QStringList arguments = {QLatin1String("url=") + address,
                                   QLatin1String("manufacturer=") + manufacturer,
                                   QLatin1String("callFunctionFile=") + writeFunctionFile(script.toUtf8()),
                                   QStringLiteral("type=win11_cpus"),
                                   QLatin1String("WVF_server=") +
                                       webViewServerName(QStringLiteral("tvins_server")),
                                   QStringLiteral("willEmbed=false")};
    // The destructor terminates a program that is still running.
    QProcess finder;
    finder.start(applicationFolder() + QLatin1String("/WebViewFinder.exe"), arguments, QIODevice::ReadWrite);
    finder.waitForFinished(timeoutMs);
    QThread::msleep(kPauseMs);
}

void rewriteWhitelist()
{
    const QString text = configured(QStringLiteral("url_win11_cpu_whitelist"), QString());
    if (text.isEmpty())
        return;
    // The file is not truncated: if the old content was longer, its tail remains.
    QFile file(checkerFilePath(kWhitelist));
    if (file.open(QIODevice::ReadWrite))
        file.write(text.toUtf8());
}

} // namespace

void refreshProcessorLists(int timeoutMs)
{
    const QString script =
        configured(QStringLiteral("url_win11_cpulist_function_text"), QString::fromLatin1(kListScript));
    for (const char* manufacturer : {"intel", "amd", "qualcomm"})
        fetchList(QString::fromLatin1(manufacturer), script, timeoutMs);
    rewriteWhitelist();
}

QString vendorListPath(const QString& name)
{
    for (const Vendor& vendor : kVendors) {
        if (name.contains(QLatin1String(vendor.word), Qt::CaseInsensitive))
            return applicationFolder() + QLatin1String("/../Win11Checker/") + QLatin1Char('/') +
                   QLatin1String(vendor.file);
    }
    return QString();
}

QString checkerFilePath(const QString& fileName)
{
    return QDir(QCoreApplication::applicationDirPath() + QLatin1String("/../Win11Checker/"))
        .absoluteFilePath(fileName);
}

QString webViewServerName(const QString& suffix)
{
    QString name = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    name.replace(QLatin1Char(' '), QLatin1Char('_'));
    name = name.toLower();
    name.remove(QLatin1String(".exe"));
    name.replace(QLatin1Char('.'), QLatin1Char('_'));
    return name + QLatin1Char('_') + suffix;
}

QString writeFunctionFile(const QByteArray& script)
{
    const QString path = QDir::tempPath() + QLatin1String("/tmp_win11_checker_function_") +
                         QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd_hh-mm-ss")) +
                         QLatin1String(".txt");
    QFile file(path);
    if (file.open(QIODevice::ReadWrite))
        file.write(script);
    return path;
}
