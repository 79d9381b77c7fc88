#include "host/objects/SegmentModel.h"

#include "host/objects/CallExamples.h"
#include "host/objects/DiskText.h"
#include "host/objects/RowChange.h"

namespace host {

namespace {

// Wide enough to see and to click.
constexpr double kMinWidth = 18;
constexpr double kGap = 2;

QString markName(WorkMark mark)
{
    switch (mark) {
    case WorkMark::Source:
        return QStringLiteral("source");
    case WorkMark::Target:
        return QStringLiteral("target");
    case WorkMark::None:
        break;
    }
    return QString();
}

QVariantList ghostList(const PendingChange& change)
{
    QVariantList list;
    for (const Ghost& ghost : change.ghosts)
        list.append(QVariantMap{{QStringLiteral("begin"), ghost.begin},
                                {QStringLiteral("end"), ghost.end},
                                {QStringLiteral("title"), entryTitle(ghost.partition)}});
    return list;
}

} // namespace

bool SegmentModel::Row::isSame(const Row& other) const
{
    return isSamePlace(other) && size == other.size && usedSize == other.usedSize &&
           fileSystem == other.fileSystem && title == other.title && flags == other.flags &&
           details == other.details;
}

SegmentModel::Row SegmentModel::rowOf(const Partition& entry)
{
    Row row{entry.diskIndex,
            entry.startSector,
            entry.size,
            entry.usedSize,
            entry.unallocated,
            entry.fsString,
            {},
            {},
            {},
            {}};
    row.title = entryTitle(entry);
    row.subtitle = entrySubtitle(entry);
    row.flags = entryFlags(entry);
    row.details = entryDetails(entry);
    row.letter = entry.unallocated ? QString() : letterOf(entry.driveLetter);
    row.calls = callExamples(entry);
    return row;
}

void SegmentModel::update(const std::vector<Partition>& entries)
{
    std::vector<Row> next;
    next.reserve(entries.size());
    for (const Partition& entry : entries)
        next.push_back(rowOf(entry));
    const int before = count();
    replaceRows(next);
    takeContents(next);
    layOut();
    Q_EMIT detailsChanged();
    if (count() != before)
        Q_EMIT countChanged();
}

// Inserts and removes rows, so that each row keeps its position.
void SegmentModel::replaceRows(std::vector<Row>& next)
{
    RowChange change =
        findRowChange(rows_, next, [](const Row& a, const Row& b) { return a.isSamePlace(b); });
    // An entry that only moved keeps its row.
    const int kept = std::min(change.removed, change.inserted);
    const int first = change.first + kept;
    if (change.removed > kept) {
        beginRemoveRows(QModelIndex(), first, change.first + change.removed - 1);
        rows_.erase(rows_.begin() + first, rows_.begin() + change.first + change.removed);
        endRemoveRows();
    }
    if (change.inserted > kept) {
        beginInsertRows(QModelIndex(), first, change.first + change.inserted - 1);
        rows_.insert(rows_.begin() + first, next.begin() + first,
                     next.begin() + change.first + change.inserted);
        endInsertRows();
    }
}

void SegmentModel::takeContents(std::vector<Row>& next)
{
    for (int row = 0; row < count(); ++row) {
        Row& shown = rows_[static_cast<std::size_t>(row)];
        Row& wanted = next[static_cast<std::size_t>(row)];
        if (shown.isSame(wanted))
            continue;
        wanted.piece = shown.piece;
        wanted.mark = shown.mark;
        wanted.pending = shown.pending;
        shown = std::move(wanted);
        Q_EMIT dataChanged(index(row), index(row));
    }
}

void SegmentModel::setMarks(const WorkMarks& marks)
{
    for (int row = 0; row < count(); ++row) {
        Row& shown = rows_[static_cast<std::size_t>(row)];
        const auto found = marks.find({shown.diskIndex, shown.startSector});
        const WorkMark wanted = found == marks.end() ? WorkMark::None : found->second;
        if (shown.mark == wanted)
            continue;
        shown.mark = wanted;
        Q_EMIT dataChanged(index(row), index(row), {MarkRole});
    }
}

void SegmentModel::setPending(const PendingChanges& changes)
{
    for (int row = 0; row < count(); ++row) {
        Row& shown = rows_[static_cast<std::size_t>(row)];
        const auto found = changes.find({shown.diskIndex, shown.startSector});
        const PendingChange wanted = found == changes.end() ? PendingChange() : found->second;
        if (shown.pending == wanted)
            continue;
        shown.pending = wanted;
        Q_EMIT dataChanged(index(row), index(row), {LostRole, BusyRole, GhostsRole});
    }
}

void SegmentModel::layOut()
{
    std::vector<qint64> sizes;
    for (const Row& row : rows_)
        sizes.push_back(row.size);
    const std::vector<BarPiece> pieces = layoutBar(sizes, barWidth_, kMinWidth, kGap);
    for (int row = 0; row < count(); ++row) {
        BarPiece& piece = rows_[static_cast<std::size_t>(row)].piece;
        const BarPiece& wanted = pieces[static_cast<std::size_t>(row)];
        if (piece == wanted)
            continue;
        piece = wanted;
        Q_EMIT dataChanged(index(row), index(row), {LeftRole, WidthRole});
    }
}

void SegmentModel::setBarWidth(double width)
{
    if (width == barWidth_)
        return;
    barWidth_ = width;
    layOut();
    Q_EMIT barWidthChanged();
}

QString SegmentModel::details(int row) const
{
    return row >= 0 && row < count() ? rows_[static_cast<std::size_t>(row)].details : QString();
}

QString SegmentModel::letter(int row) const
{
    return row >= 0 && row < count() ? rows_[static_cast<std::size_t>(row)].letter : QString();
}

QStringList SegmentModel::calls(int row) const
{
    return row >= 0 && row < count() ? rows_[static_cast<std::size_t>(row)].calls : QStringList();
}

int SegmentModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant SegmentModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case TitleRole:
        return row.title;
    case SubtitleRole:
        return row.subtitle;
    case FlagsRole:
        return row.flags;
    case DetailsRole:
        return row.details;
    case FileSystemRole:
        return row.fileSystem;
    case ShareRole:
        return row.size > 0 ? static_cast<double>(row.usedSize) / static_cast<double>(row.size) : 0.0;
    case FreeRole:
        return row.free;
    case MarkRole:
        return markName(row.mark);
    case LostRole:
        return row.pending.isLost;
    case BusyRole:
        return row.pending.isRunning;
    case GhostsRole:
        return ghostList(row.pending);
    case LeftRole:
        return row.piece.x;
    case WidthRole:
        return row.piece.width;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> SegmentModel::roleNames() const
{
    return {{TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {FlagsRole, "flags"},
            {DetailsRole, "details"},
            {FileSystemRole, "fileSystem"},
            {ShareRole, "usedShare"},
            {FreeRole, "isFree"},
            {MarkRole, "mark"},
            {LostRole, "lost"},
            {BusyRole, "busy"},
            {GhostsRole, "ghosts"},
            {LeftRole, "pieceLeft"},
            {WidthRole, "pieceWidth"}};
}

} // namespace host
