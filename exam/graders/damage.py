"""Is everything that the request did not name as it was before?"""

from ..conditions import shown
from .loss import Loss

ENTRY_FIELDS = ("letter", "label", "filesystem", "size", "used", "start", "cluster", "hidden", "active", "primary", "guid",
                "content")
LONGEST = 40
DISK_FIELDS = ("table", "size", "online", "readonly", "dynamic")


def grade(task, evidence, interface):
    if not evidence.host_survived:
        return [Loss(2, "The host ended, so it is unknown what was damaged.", "host ended")]
    comparison = Comparison(task.may_change)
    comparison.machines(evidence.before, evidence.after)
    orders = [event["line"] for event in evidence.events if event["kind"] == "order"]
    losses = [Loss(1, text, "damage", orders) for text in comparison.differences]
    return losses + forbidden_events(task, evidence)


class Comparison:
    def __init__(self, may_change):
        self.may_change_ = may_change
        self.differences = []

    def machines(self, before, after):
        for disk in before.disks:
            same = next((each for each in after.disks if (each.serial, each.size) == (disk.serial, disk.size)), None)
            if same is None:
                self.add_(disk.name, "everything", f"{disk.name.capitalize()} is gone.")
            else:
                self.disks_(disk, same)
        for key, value in before.settings.items():
            if after.settings.get(key) != value:
                self.add_("machine", key, f"The setting {key} is {after.settings.get(key)}, it was {value}.")

    def disks_(self, before, after):
        for field in DISK_FIELDS:
            self.field_(before.name, field, getattr(before, field), getattr(after, field))
        left = list(after.partitions)
        for entry in before.partitions:
            same = counterpart(entry, left)
            if same is None:
                self.add_(entry.name, "everything", f"{entry.name} is gone.", before.name)
                continue
            left.remove(same)
            for field in ENTRY_FIELDS:
                self.field_(entry.name, field, getattr(entry, field), getattr(same, field), before.name)
            if entry.bytes != same.bytes and entry.name not in self.may_change_:
                self.add_(entry.name, "bytes", f"{entry.name} was written to.", before.name)
        for entry in left[self.may_change_.get(f"new on {before.name}", 0):]:
            self.add_(entry.name, "new", f"{entry.name} on {before.name} is new.", before.name)

    def field_(self, name, field, was, now, disk=""):
        if was != now:
            self.add_(name, field, f"{name} {field} is {short(now)}; it was {short(was)}.", disk)

    def add_(self, name, field, text, disk=""):
        for each in (name, disk):
            allowed = self.may_change_.get(each, [])
            if allowed == "everything" or (each == name and field in allowed):
                return
        self.differences.append(text)


def short(value):
    """The value without most of a digest."""
    text = shown(value)
    return text if len(text) <= LONGEST else text[:LONGEST] + "..."


def counterpart(entry, others):
    """The same partition afterwards: at its place with its letter, otherwise with its letter, otherwise at its place."""
    for same in (lambda other: (other.start, other.letter) == (entry.start, entry.letter),
                 lambda other: entry.letter and other.letter == entry.letter,
                 lambda other: other.start == entry.start,
                 lambda other: not entry.letter and entry.label and (other.label, other.letter) == (entry.label, "")):
        found = [other for other in others if same(other)]
        if found:
            return found[0]
    return None


def forbidden_events(task, evidence):
    """Events of `never`: "any order", "order FUNCTION", "guide opened", "guide started"."""
    losses = []
    for event in evidence.events:
        if event["kind"] == "order":
            names = ("any order", "order " + event["function"])
        elif event["kind"] == "guide":
            names = ("guide " + event["action"],)
        else:
            continue
        if any(name in task.never for name in names):
            what = names[-1] + (f" ({event['title']})" if event["kind"] == "guide" else "")
            losses.append(Loss(1, f"This must not have happened: {what}.", "forbidden event", [event["line"]]))
    return losses
