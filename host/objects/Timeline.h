#pragma once

#include "host/machine/Text.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QString>

#include <deque>

namespace host {

/// What the agent has done, for the window: a row for each tool call that was announced at the gate, for
/// what the gate has refused, and for each order or refusal outside an announced call. Newest last.
/// Application thread.
class Timeline : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TimeRole = Qt::UserRole, ///< hh:mm:ss
        ToolRole,
        ArgumentsRole,
        ResultRole, ///< the answer in the words that the agent got; empty while there is none
        ReasonRole, ///< why the host said no, which the agent does not learn; mostly empty
        StateRole,  ///< "running", "queued", "rejected", "answered", or "held": refused by the gate
        TimesRole   ///< of a refusal by the gate: how often in a row; else 0
    };

    using QAbstractListModel::QAbstractListModel;

    /// The agent is about to call a tool, in its own words: the tool's name, then what it likes.
    void announce(const QString& toolCalls);
    /// The announced call got its answer.
    void answer(const QString& result, bool queued);
    /// The host was given an order.
    void recordOrder(const Text& function, const QString& arguments);
    /// The host said no to a question.
    void recordRejection(const Text& function, const QString& arguments, const Text& reason);

    /// The gate has refused a call, in these words. Refusals in a row, for the same reason, are one row.
    void recordGateRejection(const QString& text);

    /// The language has changed: tools and reasons read otherwise now. Results are the answers that the agent
    /// got, and stay.
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
        QString time;
        Text tool;
        QString arguments;
        QString result;
        Text reason;
        QString state;
        int times = 0; ///< a refusal of the gate: how often; else 0
    };

    bool isCallOpen() const { return open_ >= 0; }
    void append(const Text& tool, const QString& arguments, const QString& state);
    void changed(int row);

    std::deque<Row> rows_;
    int open_ = -1; ///< the row of the announced call that has no answer yet; -1 if there is none
};

} // namespace host
