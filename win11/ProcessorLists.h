#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The lists of processors that the system's maker supports: text files in the folder "Win11Checker" next to
/// the application's folder. All functions block. Any thread, one at a time.

/// Timeout of the program that fetches one list, in milliseconds.
constexpr int kListFinderTimeoutMs = 30000;

/// Fetches each manufacturer's list with the program "WebViewFinder.exe" and rewrites the whitelist from the
/// remote configuration. A program that still runs after @p timeoutMs is terminated. Failures are ignored:
/// the old files remain.
void refreshProcessorLists(int timeoutMs = kListFinderTimeoutMs);

/// True if the words of a line of the manufacturer's list or of the whitelist occur in @p name, in sequence.
/// The whitelist is read even after a match, and its first lines can cancel the match.
bool isProcessorSupported(const QString& name);

/// The path of the manufacturer's list; empty for an unknown manufacturer.
QString vendorListPath(const QString& name);

/// The path of a file in the folder of the lists.
QString checkerFilePath(const QString& fileName);

/// The words of @p text, joined by single spaces.
QString normaliseProcessorText(const QString& text);

/// True if the name contains the words of the line in sequence, starting at the first occurrence of the
/// line's first word.
bool tokensMatch(const QStringList& nameTokens, const QStringList& lineTokens);

/// The server name for the list program: the application's file name in lower case without ".exe", with
/// underscores for spaces and dots, followed by an underscore and @p suffix.
QString webViewServerName(const QString& suffix);

/// Writes @p script to a temporary file and returns its path, even if writing fails. The file is not deleted;
/// calls within the same second share it.
QString writeFunctionFile(const QByteArray& script);
