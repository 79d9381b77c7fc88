// Search of the processor lists.
#include "win11/ProcessorLists.h"

#include <QtCore/QFile>

namespace {

QString normalizedName(QString text)
{
    // Case-sensitive, so before the conversion to lower case.
    for (const char* mark : {"(TM)", "(C)", "(R)"})
        text.remove(QLatin1String(mark));
    return normaliseProcessorText(text.toLower());
}

QStringList words(const QString& text)
{
    return text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// Reads lines until one matches. A line that is not a substring of the name leaves @p result unchanged.
void searchList(const QString& path, const QString& name, bool& result)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return;
    while (!file.atEnd()) {
        const QString line = normalizedName(QString::fromUtf8(file.readLine()).trimmed());
        if (name.contains(line))
            result = tokensMatch(words(name), words(line));
        if (result)
            return;
    }
}

} // namespace

QString normaliseProcessorText(const QString& text)
{
    QStringList pieces;
    for (const QString& piece : words(text)) {
        const QString trimmed = piece.trimmed();
        if (!trimmed.isEmpty())
            pieces.append(trimmed);
    }
    return pieces.join(QLatin1Char(' '));
}

bool tokensMatch(const QStringList& nameTokens, const QStringList& lineTokens)
{
    if (nameTokens.isEmpty() || lineTokens.isEmpty())
        return false;
    const int start = nameTokens.indexOf(lineTokens.first());
    if (start < 0 || nameTokens.size() - start < lineTokens.size())
        return false;
    for (int i = 0; i < lineTokens.size(); ++i) {
        if (nameTokens.at(start + i) != lineTokens.at(i))
            return false;
    }
    return true;
}

bool isProcessorSupported(const QString& name)
{
    bool result = false;
    if (name.isEmpty())
        return result;
    const QString plainName = normalizedName(name);
    for (const QString& path :
         {vendorListPath(name), checkerFilePath(QStringLiteral("win11_cpu_whitelist.txt"))})
        searchList(path, plainName, result);
    return result;
}
