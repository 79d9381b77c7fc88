#pragma once

#include "host/machine/Text.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QString>

#include <deque>

namespace host {

/// The agent's calls for the window: a row for each announced tool call, for rejections by the gate, and for
/// each order or rejection outside an announced call. Newest last. Application thread.
class Timeline : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TimeRole = Qt::UserRole, ///< hh:mm:ss
        ToolRole,
        ArgumentsRole,
        ResultRole, ///< the agent's answer, not translated; empty until the call ends
        ReasonRole, ///< reason for a rejection, which the agent does not get
        StateRole,  ///< "running", "queued", "rejected", "answered", or "held": rejected by the gate
        TimesRole   ///< number of consecutive rejections by the gate; 0 for other rows
    };

    using QAbstractListModel::QAbstractListModel;

    /// The agent announces a call: the tool's name, then any text.
    void announce(const QString& toolCalls);
    /// The announced call has ended.
    void answer(const QString& result, bool queued);
    /// The host received an order.
    void recordOrder(const Text& function, const QString& arguments);
    /// The host rejected an order.
    void recordRejection(const Text& function, const QString& arguments, const Text& reason);

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
        QString time;
        Text tool;
        QString arguments;
        QString result;
        Text reason;
        QString state;
        int times = 0; ///< number of consecutive rejections by the gate; 0 for other rows
    };

    bool isCallOpen() const { return open_ >= 0; }
    void append(const Text& tool, const QString& arguments, const QString& state);
    void changed(int row);

    std::deque<Row> rows_;
    int open_ = -1; ///< row of the announced call without an answer; -1 if no call is open
};

} // namespace host
