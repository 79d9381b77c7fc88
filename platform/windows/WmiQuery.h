#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

#include <vector>

/// Runs a WQL query and reads the named properties of each row. COM is initialised and uninitialised on the
/// calling thread. Empty on any failure.
std::vector<QVariantMap> runWmiQuery(const QString& nameSpace, const QString& query,
                                     const QStringList& properties);
