"""The indented blocks of the README, and the steps that belong to them."""

import re

# Commands with an argument in sentences, and options at the start of a row of the table for scripts/run.
SENTENCE = re.compile(r"`((?:scripts/|build/|zor)[^`\n]* [^`\n]*)`")
OPTION = re.compile(r"^\| `(--[^`]*)`", re.MULTILINE)
TIME = re.compile(r"^\d\d:\d\d:\d\d\.\d{3} ")
BLOCK = re.compile(r"(?:(?<=\n\n)|\A)((?:    .*\n|\n(?=    ))+)")


def blocks(text):
    """Each indented block without its indentation."""
    return [re.sub("^    ", "", match.group(1), flags=re.MULTILINE) for match in BLOCK.finditer(text)]


def parts(block, firsts):
    """Splits a block before each line that begins a step of its own."""
    found = []
    for line in block.splitlines():
        if not found or any(line.startswith(first) for first in firsts):
            found.append("")
        found[-1] += line + "\n"
    return found


def assign(text, steps):
    """Pairs of a step and its text, in the order of the README. Raises ValueError if one has no counterpart."""
    pairs = []
    rest = list(steps)
    for block in blocks(text):
        count = 1
        while len(rest) > count and any(line.startswith(rest[count].first) for line in block.splitlines()[1:]):
            count += 1
        own, rest = rest[:count], rest[count:]
        found = parts(block, [step.first for step in own[1:]])
        if len(found) != len(own) or any(not text.startswith(step.first) for step, text in zip(own, found)):
            raise ValueError(f"tests/readme/steps.py has no step for this block of the README:\n{block}")
        pairs += zip(own, found)
    if rest:
        raise ValueError(f"The README has no block for the step \"{rest[0].first}\".")
    return pairs


def sentence_commands(text):
    """The commands in sentences and tables, each once."""
    found = [f"scripts/run {option}" for option in OPTION.findall(text)] + SENTENCE.findall(text)
    return list(dict.fromkeys(found))


def missing_commands(text, steps):
    """Commands in sentences without a step, and steps without such a command."""
    return sorted(set(sentence_commands(text)) ^ {step.first for step in steps})


def missing_lines(example, output):
    """The lines of an example that the output does not contain. Times differ in each run, and an example can be shortened."""
    printed = [TIME.sub("", line).rstrip() for line in output.splitlines()]

    def is_printed(line):
        return line in printed or line.endswith("...") and any(each.startswith(line[:-3]) for each in printed)

    return [line for line in example.splitlines() if line.strip() and not is_printed(TIME.sub("", line).rstrip())]
