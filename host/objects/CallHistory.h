#pragma once

#include "host/objects/Timeline.h"

#include <QtCore/QSortFilterProxyModel>

namespace host {

/// The agent's calls, or only those that name a drive, for the QML files as `history`. Application thread.
class CallHistory : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(QString drive READ drive NOTIFY driveChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /// @p timeline must outlive this.
    explicit CallHistory(Timeline& timeline);

    /// The drive's letter; empty for all calls.
    QString drive() const { return drive_; }
    int count() const { return rowCount(); }

    /// Shows the calls that name a drive, or all calls if @p letter is empty. A drive emits wanted().
    Q_INVOKABLE void show(const QString& letter);

Q_SIGNALS:
    void driveChanged();
    void countChanged();
    /// The user asked for the history of a drive.
    void wanted();

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    void setDrive(const QString& letter);

    QString drive_;
};

} // namespace host
