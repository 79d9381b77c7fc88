#pragma once

#include "host/machine/Machine.h"
#include "host/objects/BarLayout.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QStringList>

#include <vector>

namespace host {

/// One disk's bar as rows for the window: a row for each entry of its partition list, with its place in the
/// bar. Application thread.
class SegmentModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(double barWidth READ barWidth WRITE setBarWidth NOTIFY barWidthChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Role {
        TitleRole = Qt::UserRole,
        SubtitleRole,
        FlagsRole,   ///< list of texts
        DetailsRole, ///< all about the entry, one line
        FileSystemRole,
        ShareRole, ///< how much of it is in use, 0 to 1
        FreeRole,  ///< bool: a region of free space
        LeftRole,  ///< in the bar, in its units
        WidthRole
    };

    using QAbstractListModel::QAbstractListModel;

    /// Takes the entries over and tells only of those rows that differ.
    void update(const std::vector<Partition>& entries);

    double barWidth() const { return barWidth_; }
    void setBarWidth(double width);
    int count() const { return static_cast<int>(rows_.size()); }
    /// A row's line of details, empty for a row that is not there.
    Q_INVOKABLE QString details(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void barWidthChanged();
    void countChanged();
    /// Some row's details may read otherwise now.
    void detailsChanged();

private:
    struct Row
    {
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
