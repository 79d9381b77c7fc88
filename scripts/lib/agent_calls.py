"""Calls of the sample agents: each call and its answers are printed."""

import json
import subprocess


def zorcall(*arguments):
    """Prints a call and its answers; returns the parsed answers."""
    print("\nagent> zorcall " + " ".join(json.dumps(a) if " " in a else a for a in arguments), flush=True)
    done = subprocess.run(["zorcall", *arguments], stdout=subprocess.PIPE, text=True, check=False)
    answers = [json.loads(line) for line in done.stdout.splitlines()]
    for answer in answers:
        show(answer)
    return answers


def read(*arguments):
    """The answer of one call, without printing it."""
    done = subprocess.run(["zorcall", *arguments], stdout=subprocess.PIPE, text=True, check=False)
    return json.loads(done.stdout)


def act(*arguments):
    """Calls a tool through the gate. --patient repeats the gate call until its pause of two seconds is over."""
    return zorcall("--gated", "--patient", *arguments)


def show(answer):
    for record in answer if isinstance(answer, list) else [answer]:
        print("       " + (brief(record) if isinstance(record, dict) else json.dumps(record)), flush=True)


def brief(record):
    """One line for a record of the inventory; JSON for any other record."""
    if "diskLabel" in record:
        kind = "-" if record["isUninitialized"] else "GPT" if record["isGpt"] else "MBR"
        return (f"disk {record['diskIndex']}  {record['diskLabel']:<6} {kind:<3}  {record['displayTotalCapacity']:>10}"
                f"  free {record['displayAvailableSpace']:>10}  {record['partitionCount']} entries")
    if "partitionGuid" in record:
        name = "unallocated" if record["isUnallocated"] else \
            f"{record['driveLetter'] or '-':<3}{record['fileSystemType']:<6} \"{record['label']}\""
        return f"disk {record['diskIndex']}  {record['displayRawCapacity']:>10}  {name}"
    return json.dumps(record)
