#pragma once

#include "host/machine/Text.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QString>

#include <deque>

namespace host {

/// The agent's calls for the window: a row for each announced tool call, for rejections by the gate, and for
/// each order or rejection outside an announced call. A row shows the end of the task that its call started.
/// Newest last. Application thread.
class Timeline : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TimeRole = Qt::UserRole, ///< hh:mm:ss
        ToolRole,
        ArgumentsRole, ///< for a person: sizes in units, no JSON
        ResultRole,    ///< the agent's answer, not translated; empty until the call ends
        ReasonRole,    ///< reason for a rejection or a failure, which the agent does not get
        StateRole,     ///< "running", "queued", "rejected", "answered", "held": rejected by the gate; or the
                       ///< end of the call's task: "done", "failed", "cancelled"
        TimesRole,     ///< number of consecutive rejections by the gate; 0 for other rows
        ClientRole,    ///< the agent's process; empty if unknown
        RawArgumentsRole ///< as the agent or the order gave them
    };

    using QAbstractListModel::QAbstractListModel;

    /// The agent announces a call: the tool's name, then any text.
    void announce(const QString& toolCalls, const Text& client = Text());
    /// The announced call has ended.
    void answer(const QString& result, bool queued);
    /// The host received an order.
    void recordOrder(const Text& function, const QString& arguments, const Text& client = Text());
    /// The host rejected an order.
    void recordRejection(const Text& function, const QString& arguments, const Text& reason);
    /// The host opened a guide for the call.
    void recordGuide();
    /// The order that was recorded last, or the work of the last guide, has become a task.
    void recordTask(int taskId);
    /// A task has ended: "done", "failed" or "cancelled". @p error is empty unless it failed.
    void endTask(int taskId, const QString& state, const Text& error);

    /// The gate rejected a call with this message. Consecutive rejections with the same message share one
    /// row.
    void recordGateRejection(const QString& text);

    /// Called after a change of the language. Results are not translated.
    void retranslate();

    int count() const { return static_cast<int>(rows_.size()); }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    struct Row
    {
        int number; ///< from 1; rows are numbered without a gap
        QString time;
        Text tool;
        QString arguments;
        QString result;
        Text reason;
        QString state;
        Text client;
        int times = 0; ///< number of consecutive rejections by the gate; 0 for other rows
        int taskId = 0;
        QString taskState; ///< empty until the task has ended
    };

    // Null if the row does not exist any more.
    Row* rowOf(int number);
    Row& append(const Text& tool, const QString& arguments, const QString& state, const Text& client);
    Row& openOrNew(const Text& tool, const QString& arguments, const QString& state, const Text& client);
    void changed(const Row& row);

    std::deque<Row> rows_;
    int lastNumber_ = 0;
    int open_ = 0;    ///< number of the announced call without an answer; 0 if no call is open
    int ordered_ = 0; ///< of the row of the last order without a task
    int guide_ = 0;   ///< of the row that opened the last guide
};

} // namespace host
