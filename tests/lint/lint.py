#!/usr/bin/env python3
"""Checks what the compiler does not: who includes whom, what the program may name, how long files
are, and their formatting. Each rule first proves on a made-up offender that it can fail."""

import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
LONGEST = 500

# Rooms from the bottom to the top: a file may include files of its own room and of those named.
ROOMS = [
    ("types", r"src/types/", []),
    ("ports", r"src/ports/", ["types"]),
    ("state", r"src/startup/mdl(Const|Var|Tools)\.", ["types", "ports"]),
    ("forms", r"src/ui/(controls/|frm[A-Z][A-Za-z]*(?<!Events)\.|Forms\.|StatusLamp\.)",
     ["types", "ports", "state"]),
    ("wiring", r"src/ui/frm[A-Za-z]+Events\.", ["types", "ports", "state", "forms", "modules"]),
    ("start", r"src/startup/(mdlStartUp|World)\.",
     ["types", "ports", "state", "forms", "modules", "wiring"]),
    ("modules", r"src/[a-z]+/mdl", ["types", "ports", "state", "forms"]),
    ("common", r"platforms/common/", ["types", "ports", "forms"]),
    ("scripted", r"platforms/scripted/", ["types", "ports", "forms", "common"]),
    ("simulated", r"platforms/simulated/", ["types", "ports", "forms", "common"]),
    ("linux", r"platforms/linux/", ["types", "ports", "forms", "common"]),
]

SYSTEM_NAMES = re.compile(
    r"\b(Qt|Q[A-Z][a-z]\w+|Win32|WinAPI|windows\.h|unistd\.h|fcntl\.h|dbus\w*|D-Bus|GTK|Linux|POSIX"
    r"|X11|iostream|printf|snprintf|strftime|long)\b|#include <sys/|#include <format>"
)

# Written in pieces, so that this file does not hold what it looks for.
FOREIGN_WORDS = re.compile(
    "|".join([
        r"\b[Tt]he " + r"specification\b", r"\bspec" + r"\.md\b", r"\bPart " + r"[0-9]+\.[0-9]",
        r"\bissue " + r"#?[0-9]", "/wo" + "rk/", "/ho" + "me/", "debian" + r"\.org",
        "npmjs" + r"\.",
    ])
)


def tracked(*patterns):
    names = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard", "--", *patterns],
        cwd=ROOT, check=True, capture_output=True, text=True,
    ).stdout.split("\n")
    return sorted(name for name in set(names) if name and (ROOT / name).is_file())


def read(name):
    return (ROOT / name).read_text(encoding="utf-8", errors="replace")


def room_of(name):
    return next((room for room, pattern, _ in ROOMS if re.match(pattern, name)), None)


def included(text, names):
    for line in re.findall(r'^#include "([^"]+)"', text, re.MULTILINE):
        for folder in ("src/", "platforms/"):
            if folder + line in names:
                yield folder + line


def check_order(files):
    allowed = {room: {room, *below} for room, _, below in ROOMS}
    for name, text in files.items():
        room = room_of(name)
        if room is None:
            yield name + ": stands in no room"
            continue
        for target in included(text, files):
            if room_of(target) not in allowed[room]:
                yield "%s: must not include %s" % (name, target)


def check_circles(files):
    state = {}

    def visit(name, path):
        if state.get(name) == "done":
            return None
        if state.get(name) == "open":
            return path[path.index(name):] + [name]
        state[name] = "open"
        for target in included(files[name], files):
            circle = visit(target, path + [name])
            if circle:
                return circle
        state[name] = "done"
        return None

    for name in files:
        circle = visit(name, [])
        if circle:
            yield "a circle: " + " -> ".join(circle)
            return


def without_comments(text):
    return re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\])*"', "", text, flags=re.DOTALL)


def check_names(files):
    for name, text in files.items():
        if name.startswith("src/"):
            includes = "\n".join(re.findall(r"^#include <[^>]+>", text, re.MULTILINE))
            for found in SYSTEM_NAMES.finditer(without_comments(text) + "\n" + includes):
                yield "%s: names %s" % (name, found.group(0))


def check_words(files):
    for name, text in files.items():
        for found in FOREIGN_WORDS.finditer(text):
            yield "%s: says %s" % (name, found.group(0))


def check_length(files):
    for name, text in files.items():
        if text.count("\n") > LONGEST:
            yield "%s: %d lines" % (name, text.count("\n"))


def check_once(files):
    for name, text in files.items():
        if name.endswith(".h") and not text.startswith("#pragma once\n"):
            yield name + ": does not begin with #pragma once"


def check_lists(files):
    for name, text in files.items():
        for found in re.finditer(r"src/\w+/\w+\.cpp", text):
            yield "%s: lists %s; both compilers take every file of src/" % (name, found.group(0))


def check_format(names):
    if shutil.which("clang-format") is None:
        yield "clang-format is not installed"
        return
    run = subprocess.run(
        ["clang-format", "--dry-run", "-Werror", *names], cwd=ROOT, capture_output=True, text=True
    )
    if run.returncode != 0:
        yield "clang-format:\n" + "\n".join(run.stderr.splitlines()[:20])


def check_headers_alone(names):
    """Every header of the core compiles by itself with nothing else in reach."""
    compiler = ["g++", "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Isrc", "-x", "c++", "-"]
    lines = "".join('#include "%s"\n' % name[len("src/"):] for name in names)
    if subprocess.run(compiler, cwd=ROOT, input=lines, text=True).returncode != 0:
        yield "the headers do not compile together"
    for name in names:
        # Only a header that leans on another one's includes fails alone; most are cheap to try.
        line = '#include "%s"\n' % name[len("src/"):]
        if subprocess.run(compiler, cwd=ROOT, input=line, text=True,
                          capture_output=True).returncode != 0:
            yield name + ": does not compile by itself"


OFFENDERS = [
    (check_order, {"src/types/A.h": '#include "ports/B.h"\n', "src/ports/B.h": ""}),
    (check_order, {"platforms/linux/A.h": '#include "settings/mdlB.h"\n',
                   "src/settings/mdlB.h": ""}),
    (check_order, {"src/elsewhere/A.h": ""}),
    (check_circles, {"src/types/A.h": '#include "types/B.h"\n',
                     "src/types/B.h": '#include "types/A.h"\n'}),
    (check_names, {"src/types/A.h": "QString text;\n"}),
    (check_names, {"src/types/A.h": "#include <unistd.h>\n"}),
    (check_words, {"README.md": "as Part " + "1.1 says\n"}),
    (check_length, {"src/types/A.h": "\n" * (LONGEST + 1)}),
    (check_once, {"src/types/A.h": "int a;\n"}),
    (check_lists, {"CMakeLists.txt": "add_library(x src/types/A.cpp)\n"}),
]


def main():
    for check, files in OFFENDERS:
        if not list(check(files)):
            print("lint: %s cannot fail" % check.__name__)
            return 1
    code = {name: read(name) for name in tracked("src/*.cpp", "src/*.h", "platforms/*.cpp",
                                                 "platforms/*.h")}
    sources = {name: read(name) for name in tracked("*.cpp", "*.h", "*.py", "*.sh")}
    texts = {name: read(name) for name in tracked() if not name.endswith((".png", "LICENSE"))}
    builds = {name: read(name) for name in tracked("*CMakeLists.txt", "*.cmake")}
    problems = [
        *check_order(code), *check_circles(code), *check_names(code), *check_words(texts),
        *check_length(sources), *check_once(sources), *check_lists(builds),
        *check_format([name for name in sources if name.endswith((".cpp", ".h"))]),
        *check_headers_alone([name for name in code
                              if name.startswith("src/") and name.endswith(".h")]),
    ]
    for problem in problems:
        print(problem)
    print("lint: %d files, %d problems" % (len(texts), len(problems)))
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
