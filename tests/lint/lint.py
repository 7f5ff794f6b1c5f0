#!/usr/bin/env python3
"""Checks what the compiler does not: who includes whom, what the program may name, how long files
are, their formatting, and the scripts. Each rule first proves on made-up offenders that it can fail.

Exit status: 0 all is well, 1 something is wrong, 77 all is well but a tool was missing."""

import pathlib
import re
import subprocess
import sys

sys.dont_write_bytecode = True

import proofs  # noqa: E402
import rules  # noqa: E402
import tools  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
NOT_SOURCES = {".git", "build", "out", "__pycache__"}
NOT_TEXTS = (".png", ".ico", "LICENSE")


def all_names():
    """The files that are kept; outside a repository, every file but what building makes."""
    try:
        kept = subprocess.run(
            ["git", "-c", "safe.directory=*", "ls-files", "-z", "--cached", "--others",
             "--exclude-standard"],
            cwd=ROOT, capture_output=True, text=True, check=True,
        ).stdout
    except (OSError, subprocess.CalledProcessError):
        kept = ""
    if kept:
        names = kept.split("\0")
    else:
        names = [str(path.relative_to(ROOT)) for path in ROOT.rglob("*")
                 if not NOT_SOURCES & set(path.relative_to(ROOT).parts)]
    return sorted(name for name in set(names) if name and (ROOT / name).is_file())


def chosen(names, suffixes, folders=("",)):
    return [name for name in names if name.endswith(suffixes) and name.startswith(folders)]


def shell_scripts(names):
    """By their names, or by their first line."""
    def is_one(name):
        with open(ROOT / name, "rb") as file:
            return re.match(rb"#!\S*(?:/env )?\S*\b(?:ba|da)?sh\b", file.readline(80)) is not None
    return [name for name in names if name.endswith(".sh") or is_one(name)]


def texts_of(names):
    return {name: (ROOT / name).read_text(encoding="utf-8", errors="replace") for name in names}


def headers_alone(names):
    """The headers that need no toolkit, with the folders they may look into."""
    for name in chosen(names, ".h", ("src/",)):
        yield name, ["src"]
    for name in chosen(names, ".h", ("platforms/common/", "platforms/scripted/",
                                     "platforms/simulated/")):
        yield name, ["src", "platforms"]


def problems_of(names, missing):
    code = texts_of(chosen(names, (".cpp", ".h"), ("src/", "platforms/", "app/")))
    sources = texts_of(chosen(names, (".cpp", ".h", ".py", ".sh")))
    yield from rules.check_order(code)
    yield from rules.check_paths(code)
    yield from rules.check_circles(code)
    yield from rules.check_names(code)
    yield from rules.check_standard_headers(code)
    yield from rules.check_trap_names(code)
    yield from rules.check_exceptions(code)
    yield from rules.check_accessors(code)
    yield from rules.check_text_tables(code)
    yield from rules.check_words(texts_of([name for name in names if not name.endswith(NOT_TEXTS)]))
    yield from rules.check_length(sources)
    yield from rules.check_function_length(sources)
    yield from rules.check_columns(texts_of(chosen(names, ".md")))
    yield from rules.check_once(sources)
    yield from rules.check_lists(texts_of(chosen(names, ("CMakeLists.txt", ".cmake"))))
    for check, argument in (
        (tools.check_format, chosen(names, (".cpp", ".h"))),
        (tools.check_headers_alone, list(headers_alone(names))),
        (tools.check_shell, shell_scripts(names)),
        (tools.check_python, chosen(names, ".py")),
    ):
        try:
            yield from check(argument, ROOT)
        except tools.Missing as absent:
            missing.append("%s: skipped, %s is not installed" % (check.__name__, absent))


def main():
    cannot_fail = list(proofs.failed_proofs())
    cannot_fail += [name + " is asked about nothing" for name in vars(rules)
                    if name.startswith("check_") and name not in problems_of.__code__.co_names]
    for line in cannot_fail:
        print("lint: " + line)
    names, missing = all_names(), []
    problems = list(problems_of(names, missing))
    print("\n".join([*problems, *missing,
                     "lint: %d files, %d problems" % (len(names), len(problems))]))
    if problems or cannot_fail:
        return 1
    return 77 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
