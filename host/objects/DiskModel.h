#pragma once

#include "host/backend/Backend.h"
#include "host/objects/SegmentModel.h"

#include <QtCore/QAbstractListModel>

#include <vector>

namespace host {

/// The machine's disks, each with a SegmentModel for its bar. A change of the machine changes only the rows
/// that differ. Application thread.
class DiskModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY summaryChanged)

public:
    enum Role {
        NameRole = Qt::UserRole,
        KindRole,
        SizeRole,
        FlagsRole,   ///< QStringList
        AlarmRole,   ///< bool: the disk has a problem
        SearchRole,  ///< the text that the search field searches
        SegmentsRole ///< the SegmentModel, owned by this model
    };

    explicit DiskModel(Backend& backend, QObject* parent = nullptr);

    /// Shows the current machine in the current language. Change signals are emitted only for rows that
    /// differ.
    void refresh();
    /// Marks the entries of the open guide.
    void setMarks(const WorkMarks& marks);
    /// Shows the effects of the open orders.
    void setPending(const PendingChanges& changes);

    int count() const { return static_cast<int>(rows_.size()); }
    /// "4 disks, 4.8 TB"
    QString summary() const { return summary_; }
    /// The SegmentModel of a row; null if the row does not exist.
    Q_INVOKABLE QObject* segments(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void summaryChanged();
    /// Not a change of the rows, because they show nothing of it.
    void searchTextsChanged();

private:
    struct Row
    {
        int diskIndex;
        QString name;
        QString kind;
        QString size;
        QStringList flags;
        bool alarm;
        QString search;
        SegmentModel* segments = nullptr;
    };

    static Row rowOf(const Disk& disk, bool hasSmartError);
    void replaceRows(const std::vector<Row>& next);
    void setSummary(const Machine& machine);

    Backend& backend_;
    std::vector<Row> rows_;
    QString summary_;
};

} // namespace host
