#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The lists of processors that the system's maker supports, as text files in the folder "Win11Checker"
/// beside the application's own, and the question whether a processor is on one of them. Blocking; any
/// thread, one at a time.

/// How long the program that fetches one list may take.
constexpr int kListFinderLimitMs = 30000;

/// Has each manufacturer's list fetched by the program "WebViewFinder.exe", and rewrites the whitelist from
/// the remote configuration. A program that is over @p limitMs is ended. Failures are silent: the old files
/// stay.
void refreshProcessorLists(int limitMs = kListFinderLimitMs);

/// True if a line of the manufacturer's list or of the whitelist is a run of whole words of @p name. The
/// whitelist is read after a match too, and its first lines can cancel it.
bool isProcessorSupported(const QString& name);

/// The path of the manufacturer's list, empty for a name of no known manufacturer.
QString vendorListPath(const QString& name);

/// The path of a file in the lists' folder.
QString checkerFilePath(const QString& fileName);

/// The words of a text, joined by single blanks.
QString normaliseProcessorText(const QString& text);

/// True if the words of the line stand in the name, from the first place on at which the line's first word
/// stands.
bool tokensMatch(const QStringList& nameTokens, const QStringList& lineTokens);

/// The server name that the list program is given: the application's file name, made plain, and @p suffix.
QString webViewServerName(const QString& suffix);

/// Writes @p script to a scratch file and gives its path, whether that worked or not. The file stays behind;
/// calls within one second share it.
QString writeFunctionFile(const QByteArray& script);
