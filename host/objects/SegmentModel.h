#pragma once

#include "host/machine/Machine.h"
#include "host/machine/WorkMarks.h"
#include "host/objects/BarLayout.h"
#include "host/objects/PendingChanges.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QStringList>

#include <vector>

namespace host {

/// The bar of one disk: a row for each entry of its partition list, with its position in the bar. Application
/// thread.
class SegmentModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(double barWidth READ barWidth WRITE setBarWidth NOTIFY barWidthChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TitleRole = Qt::UserRole,
        SubtitleRole,
        FlagsRole,   ///< QStringList
        DetailsRole, ///< all details of the entry, one line
        FileSystemRole,
        ShareRole,  ///< used share, 0 to 1
        FreeRole,   ///< bool: a region of free space
        MarkRole,   ///< "source", "target" or empty: what the open guide does with the entry
        LostRole,   ///< bool: an open order destroys the data, or puts it at risk
        BusyRole,   ///< bool: the running order changes the entry
        GhostsRole, ///< list of maps: begin and end (shares of the entry, 0 to 1) and title of a new
                    ///< partition
        LeftRole,   ///< position, in the bar's units
        WidthRole
    };

    using QAbstractListModel::QAbstractListModel;

    /// Shows the entries. Change signals are emitted only for rows that differ.
    void update(const std::vector<Partition>& entries);

    /// Marks the entries of the open guide, and removes all other marks.
    void setMarks(const WorkMarks& marks);

    /// Shows the effects of the open orders, and removes all others.
    void setPending(const PendingChanges& changes);

    double barWidth() const { return barWidth_; }
    void setBarWidth(double width);
    int count() const { return static_cast<int>(rows_.size()); }
    /// The details of a row; empty if the row does not exist.
    Q_INVOKABLE QString details(int row) const;
    /// The drive's letter; empty without one.
    Q_INVOKABLE QString letter(int row) const;
    /// Calls for the command line, see callExamples().
    Q_INVOKABLE QStringList calls(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void barWidthChanged();
    void countChanged();
    /// The details of some rows may have changed.
    void detailsChanged();

private:
    struct Row
    {
        int diskIndex;
        qint64 startSector;
        qint64 size;
        qint64 usedSize;
        bool free;
        QString fileSystem;
        QString title;
        QString subtitle;
        QStringList flags;
        QString details;
        BarPiece piece{0, 0};
        WorkMark mark = WorkMark::None;
        PendingChange pending = {};
        QString letter = {};
        QStringList calls = {};

        bool isSamePlace(const Row& other) const
        {
            return startSector == other.startSector && free == other.free;
        }
        bool isSame(const Row& other) const;
    };

    static Row rowOf(const Partition& entry);
    void replaceRows(std::vector<Row>& next);
    void takeContents(std::vector<Row>& next);
    void layOut();

    std::vector<Row> rows_;
    double barWidth_ = 0;
};

} // namespace host
