#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QSortFilterProxyModel>

#include <vector>

namespace host {

class DiskModel;

/// The disks that match the search field: each word of the text occurs in the name, the kind, the serial
/// number or an entry's letter, label or file system. A word that begins with a
/// digit does not match inside a number. Upper and lower case are equal. Application thread.
class DiskFilter : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(int count READ count NOTIFY shownChanged)
    Q_PROPERTY(int total READ total NOTIFY shownChanged)

public:
    explicit DiskFilter(DiskModel& disks, QObject* parent = nullptr);

    QString text() const { return text_; }
    void setText(const QString& text);
    /// Number of matching disks.
    int count() const { return rowCount(); }
    /// Number of all disks.
    int total() const;
    /// The SegmentModel of a row; null if the row does not exist.
    Q_INVOKABLE QObject* segments(int row) const;

Q_SIGNALS:
    void textChanged();
    /// Rows were added or removed.
    void shownChanged();

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    DiskModel& disks_;
    QString text_;
    std::vector<QRegularExpression> words_;
};

} // namespace host
