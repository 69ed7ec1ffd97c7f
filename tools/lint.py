#!/usr/bin/env python3
"""House rules that the compiler does not see.

Floors: a file of src includes only its own folder and folders above it in src/CMakeLists.txt (which lists them from the
ground up). Lengths: a procedure has at most 80 lines, a file of code at most 500.
"""
import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
LONGEST_PROCEDURE, LONGEST_FILE = 80, 500


def files():
    """Every file that is or would be in the repository."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, capture_output=True, text=True, check=True)
    return [name for name in listed.stdout.splitlines() if os.path.isfile(os.path.join(ROOT, name))]


def lines_of(name):
    with open(os.path.join(ROOT, name), encoding="utf-8", errors="replace") as file:
        return file.read().split("\n")


def floors():
    """Folders of src in their order, ground floor first."""
    text = "\n".join(lines_of("src/CMakeLists.txt"))
    return re.findall(r"^floor\(\S+ ([\w/]+)", text, re.MULTILINE)


def check_floors(name, lines, order):
    own = os.path.dirname(name[len("src/"):])
    if own not in order:
        yield f"{name}: the folder is not listed in src/CMakeLists.txt"
        return
    for number, line in enumerate(lines, 1):
        match = re.match(r'\s*#include "([^"]+)"', line)
        if not match:
            continue
        folder = os.path.dirname(match[1])
        if folder != own and (folder not in order or order.index(folder) > order.index(own)):
            yield f"{name}:{number}: {own} may not include {match[1]}"


def without_text(line):
    """A line of code without strings, characters and the comment behind it, so that braces can be counted."""
    line = re.sub(r'"(\\.|[^"\\])*"', '""', line)
    line = re.sub(r"(?<!\w)'(\\.|[^'\\])'", "''", line)
    return line.split("//")[0]


def check_lengths(name, lines):
    if len(lines) > LONGEST_FILE:
        yield f"{name}: {len(lines)} lines, at most {LONGEST_FILE}"
    if name.endswith(".py"):
        yield from check_python_lengths(name, lines)
        return
    opened = []  # of each open brace: (line, whether a procedure's body)
    for number, line in enumerate(lines, 1):
        code = without_text(line)
        for k, mark in enumerate(code):
            if mark == "{":
                before = (lines[number - 2] if k == len(code) - len(code.lstrip()) and number > 1 else "") + code[:k]
                opened.append((number, bool(re.search(r"\)\s*(const|noexcept|override|->\s*[\w:<>]+|\s)*$", before))))
            elif mark == "}" and opened:
                first, procedure = opened.pop()
                if procedure and number - first + 1 > LONGEST_PROCEDURE:
                    yield f"{name}:{first}: a procedure of {number - first + 1} lines, at most {LONGEST_PROCEDURE}"


def check_python_lengths(name, lines):
    start = None
    for number, line in enumerate(lines + ["end"], 1):
        if start and line and not line.startswith((" ", ")", "#")):
            if number - start - 1 > LONGEST_PROCEDURE:
                yield f"{name}:{start}: a procedure of {number - start - 1} lines, at most {LONGEST_PROCEDURE}"
            start = None
        if line.startswith("def "):
            start = number


def complaints():
    order = floors()
    for name in files():
        if not name.endswith((".cpp", ".h", ".py")):
            continue
        lines = lines_of(name)
        yield from check_lengths(name, lines)
        if name.startswith("src/") and name.endswith((".cpp", ".h")):
            yield from check_floors(name, lines, order)


def main():
    found = list(complaints())
    print("\n".join(found) if found else "house rules: nothing to say")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
