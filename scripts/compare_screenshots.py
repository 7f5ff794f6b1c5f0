#!/usr/bin/env python3
"""Compares screenshots with those in another folder: DOCUMENTS NEW.

Each screenshot in NEW must be in DOCUMENTS, as large, and with no more than a few points that differ;
points differ when a channel is more than a tenth of its range apart. So a shade that another drawing
library gives an edge is no difference, and a word, a line or a greyed button is."""

import pathlib
import re
import subprocess
import sys

DIFFERING_POINTS = 40  # a short word has more
CHANNEL_APART = "10%"


def size_of(screenshot):
    answer = subprocess.run(
        ["identify", "-format", "%w x %h", str(screenshot)], capture_output=True, text=True, check=True
    )
    return answer.stdout


def points_apart(one, other):
    """How many points differ."""
    answer = subprocess.run(
        ["compare", "-metric", "AE", "-fuzz", CHANNEL_APART, str(one), str(other), "null:"],
        capture_output=True, text=True, check=False,
    )
    return int(float(re.match(r"[0-9.e+]+", answer.stderr).group()))


def fault_of(screenshot, new):
    """What is wrong with a screenshot of the documents; None for nothing."""
    if not screenshot.exists():
        return "is not there"
    if size_of(screenshot) != size_of(new):
        return "is %s, the program now %s" % (size_of(screenshot), size_of(new))
    apart = points_apart(screenshot, new)
    if apart > DIFFERING_POINTS:
        return "differs in %d points" % apart
    return None


def faults(documents, new):
    """A line for each screenshot that the program no longer looks like."""
    names = {path.name for path in new.glob("*.png")}
    found = ["%s %s" % (name, fault) for name in sorted(names)
             if (fault := fault_of(documents / name, new / name))]
    left = {path.name for path in documents.glob("*.png")} - names
    return found + ["%s is not made from the program" % name for name in sorted(left)]


def main():
    found = faults(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
    for line in found:
        print(line)
    if found:
        print("Look at the window. If it is meant to look so: scripts/screenshots.sh, and look at the screenshots.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
