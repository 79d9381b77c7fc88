#pragma once

#include <QtCore/QByteArray>

/// Timeout of the port listing in milliseconds.
constexpr int kNetstatTimeoutMs = 30000;

/// The output of `netstat -ano`, possibly incomplete after @p timeoutMs milliseconds; empty if the program
/// cannot be started.
QByteArray busyPortListing(int timeoutMs = kNetstatTimeoutMs);

/// Picks the first two ports, the second above the first, for which @p listing does not contain ":<number>".
/// A port is set to 0 if the search finds no free one.
void pickFreePorts(const QByteArray& listing, int* nativePort, int* chatPort);
