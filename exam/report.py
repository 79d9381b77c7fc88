import json
def write(result, folder, other):
    (folder / "report.json").write_text(json.dumps(result, indent=1), encoding="utf-8")
def read(folder):
    return json.loads((folder / "report.json").read_text(encoding="utf-8"))
