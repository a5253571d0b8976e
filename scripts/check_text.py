#!/usr/bin/env python3
"""Lengths and banned words of sources, each with its remedy."""
import re
import subprocess
import sys
from pathlib import Path

root = Path(__file__).resolve().parent.parent
faults = 0
BANNED = [
    (r"\bstd::sto[dfi]\b", "use parsePlainNumber or TextToDouble: the C locale has no say here"),
    (r"\bsetlocale\b|std::locale", "no locale anywhere"),
    (r"\bstd::(round|lround|nearbyint|rint)\b", "use roundHalfEven with the subject's own bias"),
    (r"\busing namespace std;", "write std:: out"),
    (r"\bFIXME\b|\bTODO\b|\bXXX\b", "finish it, or write down why it stays"),
    (r"(?<![\w.])/(work|root|home|farm)/", "no path of a machine in the tree"),
]
SOURCE = (".h", ".cpp", ".lua", ".py", ".cmake", ".md", ".txt")


def fault(path, line, text):
    global faults
    faults += 1
    print(f"{path}:{line}: {text}")


files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=root, text=True,
                       capture_output=True, check=True).stdout.split("\n")
for name in filter(None, files):
    path = root / name
    if not name.endswith(SOURCE) or not path.is_file() or name.startswith("scripts/check_"):
        continue
    lines = path.read_text(encoding="utf-8").split("\n")
    code = name.endswith((".h", ".cpp"))
    if code:
        limit = 700 if "/frm" in name or name.startswith(("tests/", "bench/")) else 500
        if len(lines) > limit:
            fault(name, limit, f"{len(lines)} lines, {limit} is the limit: part it by subject")
    for number, line in enumerate(lines, 1):
        if code and len(line) > 100:
            fault(name, number, f"{len(line)} columns, 100 is the limit")
        if line.rstrip() != line and not name.endswith(".md"):
            fault(name, number, "blanks at the end of the line")
        for pattern, remedy in BANNED:
            if re.search(pattern, line):
                fault(name, number, f"{re.search(pattern, line).group()}: {remedy}")
sys.exit(1 if faults else 0)
