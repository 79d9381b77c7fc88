#pragma once

#include <QtCore/QString>
#include <QtCore/QThread>
#include <QtCore/QVariantList>

#include <mutex>
#include <vector>

/// One call that reached a fake host object.
struct HostCallRecord
{
    QString object;
    QString member;
    QVariantList arguments;
    QThread* thread = nullptr;
    bool withResult = false; ///< the caller requested a result

    /// "object.member"
    QString where() const { return object + QLatin1Char('.') + member; }
};

/// Collects the calls of all fake objects of a host, in order. Any thread.
class Recorder
{
public:
    void add(HostCallRecord record);
    std::vector<HostCallRecord> calls() const;
    /// "object.member" of each call, in order.
    QStringList sequence() const;
    void clear();

private:
    mutable std::mutex mutex_;
    std::vector<HostCallRecord> calls_;
};

/// A value with its type as a string: `int:5`, `QString:"x"`, `map{key=int:1}`, `list[bool:true]`, `invalid`.
/// Two values with the same string have the same type and value.
QString typed(const QVariant& value);
