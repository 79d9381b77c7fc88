#pragma once

#include <QtCore/QByteArray>

/// Limit of the wait for the listing of busy ports, in milliseconds.
constexpr int kNetstatLimitMs = 30000;

/// The text that `netstat -ano` prints, as far as it came within @p limitMs; empty if it cannot be started.
QByteArray busyPortListing(int limitMs = kNetstatLimitMs);

/// Picks the first two ports, the second above the first, whose ":<number>" stands nowhere in @p listing. A
/// port stays 0 if there is none.
void pickFreePorts(const QByteArray& listing, int* nativePort, int* chatPort);
