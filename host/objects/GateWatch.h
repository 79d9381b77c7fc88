#pragma once

#include <QtCore/QObject>
#include <QtCore/QSet>

#include <mutex>
#include <vector>

namespace host {

/// Detects rejections by the library's gate, which no signal reports. Only the gate reads `popuped` on
/// another thread. It then reads `busy` on that thread, unless it has already rejected the call because of an
/// open dialog or a call shortly before.
class GateWatch : public QObject
{
    Q_OBJECT

public:
    /// @p patience: maximum milliseconds between the two reads.
    explicit GateWatch(int patience = 1000) : patience_(patience) {}

    /// Records a read of `popuped`. Any thread; reads on this object's thread are ignored, because they are
    /// not the gate's.
    void recordPopupedRead(bool open) const;
    /// Records a read of `busy`. Any thread, as above.
    void recordBusyRead(bool busy) const;

Q_SIGNALS:
    /// The gate has rejected a call with this message.
    void rejected(QString text);

private Q_SLOTS:
    void takeReads();

private:
    // One read of a property.
    struct Read
    {
        quintptr thread;
        bool ofPopuped;
        bool value;
    };

    void record(bool ofPopuped, bool value) const;
    void onPopupedRead(quintptr thread, bool open);
    void onBusyRead(quintptr thread, bool busy);

    mutable std::mutex mutex_;
    mutable std::vector<Read> reads_; ///< not yet processed by this object's thread
    int patience_;
    QSet<quintptr> between_; ///< threads that have read `popuped`, but not yet `busy`
};

} // namespace host
