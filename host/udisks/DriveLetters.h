#pragma once

#include "host/machine/Rejection.h"
#include "host/udisks/StateFile.h"

#include <QtCore/QMap>
#include <QtCore/QString>

#include <vector>

namespace host {

/// A partition as the owner of a drive letter.
struct LetterOwner
{
    QString key;      ///< unique in this host
    QString identity; ///< the same in every host; empty if the partition has no identity
};

/// Drive letters of partitions. They are the host's own: UDisks2 has no letters.
///
/// A partition keeps its letter while this object exists, and in the state file for later hosts. A letter is
/// unique in one host, also if the file contains it twice.
class DriveLetters
{
public:
    /// Letters that are not remembered.
    DriveLetters() = default;
    explicit DriveLetters(const StateFile& file) : file_(file) {}

    /// Gives each of these partitions its remembered letter, and then each remaining one the first unused
    /// letter from D on. Without an unused letter it gets none.
    void assign(const std::vector<LetterOwner>& owners);
    /// Empty for an unknown partition and for a partition without a letter.
    QString letterOf(const QString& key) const { return letters_.value(key).letter; }
    /// False if another partition has the letter, or the partition is unknown.
    bool change(const QString& key, const QString& letter);
    /// The letters of deleted partitions can be used again.
    void release(const std::vector<QString>& keys);
    /// The first problem with the state file; empty afterwards and without a problem.
    Rejection takeProblem();

private:
    struct Entry
    {
        QString letter;
        QString identity;
    };
    bool isUsed(const QString& letter) const;
    QString firstUnused() const;
    void save(const QMap<QString, QString>& changes);
    void report(const Rejection& problem);

    std::optional<StateFile> file_;
    QMap<QString, Entry> letters_; ///< by key
    Rejection problem_;
    bool isReported_ = false;
};

} // namespace host
