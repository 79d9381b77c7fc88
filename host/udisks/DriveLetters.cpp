#include "host/udisks/DriveLetters.h"

#include "host/machine/Machine.h"

#include <algorithm>
#include <utility>

namespace host {

void DriveLetters::assign(const std::vector<LetterOwner>& owners)
{
    std::vector<LetterOwner> unknown;
    std::copy_if(owners.begin(), owners.end(), std::back_inserter(unknown),
                 [this](const LetterOwner& owner) { return !letters_.contains(owner.key); });
    if (unknown.empty())
        return;
    Rejection problem;
    const QMap<QString, QString> saved = file_ ? file_->read(problem) : QMap<QString, QString>();
    report(problem);
    for (const LetterOwner& owner : unknown) {
        const QString letter = host::letterOf(saved.value(owner.identity));
        if (!letter.isEmpty() && !isUsed(letter))
            letters_.insert(owner.key, {letter, owner.identity});
    }
    QMap<QString, QString> changes;
    for (const LetterOwner& owner : unknown) {
        if (!letters_.contains(owner.key)) {
            const QString letter = firstUnused();
            letters_.insert(owner.key, {letter, owner.identity});
            changes.insert(owner.identity, letter);
        }
    }
    save(changes);
}

bool DriveLetters::change(const QString& key, const QString& letter)
{
    const auto found = letters_.find(key);
    if (found == letters_.end() || (found->letter != letter && isUsed(letter)))
        return false;
    found->letter = letter;
    save({{found->identity, letter}});
    return true;
}

void DriveLetters::release(const std::vector<QString>& keys)
{
    QMap<QString, QString> changes;
    for (const QString& key : keys) {
        if (letters_.contains(key))
            changes.insert(letters_.take(key).identity, QString());
    }
    save(changes);
}

Rejection DriveLetters::takeProblem()
{
    return std::exchange(problem_, kAccepted);
}

bool DriveLetters::isUsed(const QString& letter) const
{
    return std::any_of(letters_.begin(), letters_.end(),
                       [&](const Entry& entry) { return entry.letter == letter; });
}

QString DriveLetters::firstUnused() const
{
    for (char letter = 'D'; letter <= 'Z'; ++letter) {
        const QString candidate{QLatin1Char(letter)};
        if (!isUsed(candidate))
            return candidate;
    }
    return QString();
}

void DriveLetters::save(const QMap<QString, QString>& changes)
{
    QMap<QString, QString> identified = changes;
    identified.remove(QString());
    if (file_ && !identified.isEmpty())
        report(file_->write(identified));
}

// A file that cannot be used would otherwise be reported after each reading.
void DriveLetters::report(const Rejection& problem)
{
    if (!problem || isReported_)
        return;
    isReported_ = true;
    problem_ = problem;
}

} // namespace host
