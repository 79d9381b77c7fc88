"""The report of a run: report.json for programs and report.html, one file without scripts and without network."""

import html
import json

from .task import KINDS

JSON = "report.json"

STYLE = """
:root { color-scheme: light dark; --line: #8884; --good: #1a7f37; --bad: #c62828; --weak: #9a6700; }
body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem auto; max-width: 75rem; padding: 0 1rem; }
table { border-collapse: collapse; width: 100%; margin: 1rem 0 2rem; }
th, td { border-bottom: 1px solid var(--line); padding: .35rem .6rem; text-align: left; vertical-align: top; }
th { font-weight: 600; } td.number, th.number { text-align: right; font-variant-numeric: tabular-nums; }
.passed { color: var(--good); } .lost { color: var(--bad); } .request { opacity: .75; font-size: .9em; }
summary { cursor: pointer; } pre { white-space: pre-wrap; overflow-wrap: anywhere; font-size: .85em; margin: .3rem 0; }
ul { margin: .3rem 0; padding-left: 1.2rem; } .lines { font-family: monospace; font-size: .8em; overflow-wrap: anywhere; }
.totals td { font-weight: 600; }
"""


def read(folder):
    return json.loads((folder / JSON).read_text(encoding="utf-8"))


def write(result, folder, other=None):
    """Writes both files. With another run, the page shows it next to this one."""
    (folder / JSON).write_text(json.dumps(result, indent=1) + "\n", encoding="utf-8")
    (folder / "report.html").write_text(page([result] + ([other] if other else [])), encoding="utf-8")


def page(results):
    title = "Exam: " + " and ".join(result["agent"] for result in results)
    return f"""<!DOCTYPE html>
<html lang="en">
<head><meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1">
<title>{text(title)}</title><style>{STYLE}</style></head>
<body>
<h1>{text(title)}</h1>
{totals(results)}
<h2>Kinds of tasks</h2>
{kinds(results)}
<h2>Tasks</h2>
{tasks(results)}
</body>
</html>
"""


def text(value):
    return html.escape(str(value))


def table(identifier, head, rows):
    cells = "".join(f'<th class="{style}">{text(name)}</th>' for name, style in head)
    return f'<table id="{identifier}"><thead><tr>{cells}</tr></thead><tbody>{"".join(rows)}</tbody></table>'


def cell(content, style="number"):
    return f'<td class="{style}">{content}</td>'


def totals(results):
    rows = []
    for result in results:
        powers = ", ".join(f"pass^{k} {share:.0%}" for k, share in enumerate(result["pass_k"], start=1))
        rows.append("<tr>" + cell(text(result["agent"]), "") + cell(f"{result['passed']} of {len(result['tasks'])}")
                    + cell(f"{result['points']} of {result['most_points']}") + cell(powers)
                    + cell(result["repeats"]) + cell(f"{result['seconds']} s") + "</tr>")
    return table("totals", [("Agent", ""), ("Passed", "number"), ("Points", "number"), ("Reliability", "number"),
                            ("Attempts", "number"), ("Duration", "number")], rows)


def kinds(results):
    rows = []
    for kind in KINDS:
        cells = cell(text(kind), "")
        for result in results:
            own = [task for task in result["tasks"] if task["kind"] == kind]
            cells += cell(f"{sum(task['passed'] for task in own)} of {len(own)}")
        rows.append(f"<tr>{cells}</tr>")
    return table("kinds", [("Kind", "")] + [(result["agent"], "number") for result in results], rows)


def tasks(results):
    """One row for each task of the first run, with a group of columns for each run."""
    head = [("Task", "")]
    for result in results:
        name = f" ({result['agent']})" if len(results) > 1 else ""
        head += [("Result" + name, ""), ("Points", "number"), ("Calls", "number"), ("Seconds", "number")]
    rows = []
    for task in results[0]["tasks"]:
        title = f"<b>{text(task['name'])}</b> ({text(task['kind'])})"
        cells = cell(f'{title}<div class="request">{text(task["request"])}</div>', "")
        for result in results:
            same = next((each for each in result["tasks"] if each["name"] == task["name"]), None)
            cells += attempts(same["attempts"]) if same else cell("not run", "") + cell("") * 3
        rows.append(f'<tr id="{text(task["name"])}">{cells}</tr>')
    return table("tasks", head, rows)


def attempts(all_of_task):
    results = "".join(details(attempt) for attempt in all_of_task)
    numbers = [cell("<br>".join(text(attempt[name]) for attempt in all_of_task)) for name in ("points", "calls", "seconds")]
    return cell(results, "") + "".join(numbers)


def details(attempt):
    style = "passed" if attempt["passed"] else "lost"
    losses = "".join(f"<li>{loss_text(loss)}</li>" for loss in attempt["losses"])
    return (f'<details><summary class="{style}">{text(attempt["verdict"])}</summary><ul>{losses}</ul>'
            f'<pre>{text(attempt["conversation"]) or "(no answer)"}</pre></details>')


def loss_text(loss):
    lines = "".join(f'<div class="lines">transcript {line["line"]}: {text(line["text"])}</div>'
                    for line in loss.get("transcript", []))
    return f"&minus;{loss['points']} {text(loss['grader'])}: {text(loss['reason'])}{lines}"
