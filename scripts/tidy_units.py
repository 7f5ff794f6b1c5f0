#!/usr/bin/env python3
"""The units of a build as single files, for a checker that looks only at what stands in the file that
it is given.

  tidy_units.py join BUILD FOLDER PATTERN   writes the units whose names match into FOLDER, one file each
                                            with all that it includes of the program's sources, and how
                                            each is compiled
  tidy_units.py names                       passes a checker's messages on, with the files and lines
                                            where the sources stand
"""

import json
import pathlib
import re
import sys

PART = re.compile(r'^#line 1 "(.*)"$')

# What only the compiler understands, not the checker.
ONLY_GCC = ("-fno-tree-dse", "-ffat-lto-objects", "-mpreferred-stack-boundary=2")


def join(build, folder, pattern):
    folder = pathlib.Path(folder).resolve()
    joined = []
    for entry in json.loads((pathlib.Path(build) / "compile_commands.json").read_text()):
        name = entry["file"]
        if not re.search(pattern, name) or "qrc_" in name:
            continue
        parts = re.findall(r'^#include "(.*\.cpp)"$', pathlib.Path(name).read_text(), re.M) or [name]
        unit = folder / (re.sub(r"\W", "_", name) + ".cpp")
        unit.write_text("".join(f'#line 1 "{part}"\n{pathlib.Path(part).read_text()}' for part in parts))
        command = entry["command"].replace(f" -c {name}", f" -c {unit}")
        for unknown in ONLY_GCC:
            command = command.replace(f" {unknown} ", " ")
        joined.append({"directory": entry["directory"], "command": command, "file": str(unit)})
    (folder / "compile_commands.json").write_text(json.dumps(joined))


def place(unit, number):
    """Where the source stands that is this line of the unit."""
    lines = pathlib.Path(unit).read_text().splitlines()
    for begin in range(number - 1, -1, -1):
        if part := PART.match(lines[begin]):
            return f"{part[1]}:{number - 1 - begin}"
    return f"{unit}:{number}"


def names():
    for line in sys.stdin:
        if message := re.match(r"(/\S*/tidy/\S+\.cpp):(\d+)(:.*)", line):
            line = place(message[1], int(message[2])) + message[3] + "\n"
        sys.stdout.write(line)


if __name__ == "__main__":
    if sys.argv[1] == "join":
        join(*sys.argv[2:])
    else:
        names()
