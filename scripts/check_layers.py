#!/usr/bin/env python3
"""Every include must stay in its layer or point to a layer that the CMake lists let it use.

The layers are read from the tolvex_layer calls: name, folder, FILES, USES. src/ may include only
src/ and the standard library; Qt only in host/desktop and host/report.
"""
import re
import sys
from pathlib import Path

root = Path(__file__).resolve().parent.parent
layer_of, uses, free_headers = {}, {}, []
twice = []
for lists in (root / "src/CMakeLists.txt", root / "host/CMakeLists.txt"):
    text = re.sub(r"#.*", "", lists.read_text())
    for call in re.findall(r"tolvex_layer\(([^)]*)\)", text):
        words = call.split()
        name, folder, rest = words[0], words[1], words[2:]
        section, files, below = "", [], []
        for word in rest:
            if word in ("FILES", "USES", "SYSTEM"):
                section = word
                if rest.count(word) > 1:
                    twice.append(f"{name}: {word}")
            elif section == "FILES":
                files.append(word)
            elif section == "USES":
                below.append(word)
        if name in uses:
            twice.append(f"layer {name}")
        uses[name] = set(below)
        for stem in files:
            if f"{folder}/{stem}" in layer_of:
                twice.append(f"{name}: {stem}")
            layer_of[f"{folder}/{stem}"] = name


def closure(name, seen=None):
    seen = seen if seen is not None else set()
    for below in uses.get(name, ()):
        if below not in seen:
            seen.add(below)
            closure(below, seen)
    return seen


allowed = {name: closure(name) | {name} for name in uses}
faults = 0
for what in sorted(set(twice)):
    faults += 1
    print(f"CMakeLists.txt: {what} stands there twice")


def fault(path, line, text):
    global faults
    faults += 1
    print(f"{path.relative_to(root)}:{line}: {text}")


def stem_of(include):
    for prefix in ("src/", ""):
        candidate = root / (prefix + include)
        if candidate.exists():
            return (prefix + include).rsplit(".", 1)[0]
    return None


for path in sorted([*root.glob("src/**/*.[hc]*"), *root.glob("host/**/*.[hc]*")]):
    if path.suffix not in (".h", ".cpp"):
        continue
    here = str(path.relative_to(root))
    layer = layer_of.get(here.rsplit(".", 1)[0])
    for number, line in enumerate(path.read_text().splitlines(), 1):
        match = re.match(r'#include\s+(["<])([^">]+)[">]', line)
        if not match:
            continue
        mark, name = match.groups()
        if mark == "<":
            if re.match(r"Q[A-Z]", name) and not here.startswith(("host/desktop/", "host/report/")):
                fault(path, number, f"{name}: Qt belongs into host/desktop and host/report only")
            if here.startswith("src/") and ("/" in name or name.endswith(".h")):
                fault(path, number, f"{name}: the module uses the standard library alone")
            continue
        target = stem_of(name)
        if target is None:
            fault(path, number, f"{name}: no such file below src/ or the root")
            continue
        if here.startswith("src/") and not target.startswith("src/"):
            fault(path, number, f"{name}: the module may not include the host")
        below = layer_of.get(target)
        if layer and below and below not in allowed[layer]:
            fault(path, number, f"{name}: layer {layer} may not use {below}; move the code or "
                                "reach upwards through a table")
sys.exit(1 if faults else 0)
