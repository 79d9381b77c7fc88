"""The tools of the service: their arguments from `zorcall --list`, their classes from the gateway's table."""

import dataclasses
import json
import re
import subprocess

SIGNATURE = re.compile(r"(\w+)\((.*)\) -> \w+")


@dataclasses.dataclass
class Interface:
    arguments: dict
    classes: dict
    losses: dict
    roles: dict
    pages: set

    def reads(self, method):
        return self.classes.get(method) == "reads"

    def acts(self, method):
        return method in self.classes and not self.reads(method)

    def lost(self, method, arguments):
        """What the call can destroy, as names: "H:" or "disk 3". Empty if the call destroys nothing."""
        if self.classes.get(method) != "destroys":
            return []
        return [self.target_(name, arguments.get(name)) for name in self.losses[method]]

    def destroys(self, method, arguments):
        """What the call destroys by itself. A tool that opens a page destroys nothing until the user acts there."""
        return [] if method in self.pages else self.lost(method, arguments)

    def target_(self, name, value):
        return f"{str(value)[:1].upper()}:" if self.roles.get(name) == "drive" else f"disk {value}"


def read_interface(zorcall, table):
    listed = subprocess.run([zorcall, "--list"], stdout=subprocess.PIPE, text=True, check=True).stdout
    arguments = {}
    for line in listed.splitlines():
        if found := SIGNATURE.fullmatch(line):
            arguments[found[1]] = [part.split(":")[0] for part in found[2].split(", ") if part]
    content = json.loads(table.read_text(encoding="utf-8"))
    return Interface(
        arguments,
        {name: tool["class"] for name, tool in content["tools"].items()},
        {name: tool.get("loses", []) for name, tool in content["tools"].items()},
        {name: argument.get("role") for name, argument in content["arguments"].items()},
        {name for name, tool in content["tools"].items() if "onScreen" in tool},
    )
