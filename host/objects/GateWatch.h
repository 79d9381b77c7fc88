#pragma once

#include <QtCore/QObject>
#include <QtCore/QSet>

#include <mutex>
#include <vector>

namespace host {

/// Notices where the library's gate has refused a call, of which it tells its host nothing. The gate alone
/// reads `popuped`, on a thread of its own, and goes on to read `busy` on that thread unless it has refused
/// already: for an open dialog, or because it was asked too soon after another call.
class GateWatch : public QObject
{
    Q_OBJECT

public:
    /// @p patience: how long, in milliseconds, the second read may come after the first.
    explicit GateWatch(int patience = 1000) : patience_(patience) {}

    /// `popuped` was read as @p open. Any thread; reads on this object's own thread are not the gate's.
    void recordPopupedRead(bool open) const;
    /// `busy` was read as @p busy. Any thread, as above.
    void recordBusyRead(bool busy) const;

Q_SIGNALS:
    /// The gate has refused, in these words.
    void rejected(QString text);

private Q_SLOTS:
    void takeReads();

private:
    // One read of a property, as it came.
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
    mutable std::vector<Read> reads_; ///< those that this object's thread has not looked at yet
    int patience_;
    QSet<quintptr> between_; ///< threads that have read `popuped` and not yet `busy`
};

} // namespace host
