#!/usr/bin/env python3
"""Breaks the program's code on purpose, one place at a time, and tells whether its tests notice.

  mutants.py [NAME...]   all breaks of tests/mutants/journal.py, or those of that name
  mutants.py --texts     tells only whether each text that is to be replaced is still there once

It works on a copy, build/mutants. Exit status: 0 each break was noticed, 1 one was not, or a text is not
there any more, or does not compile, or the tests fail without a break."""

import pathlib
import subprocess
import sys

sys.dont_write_bytecode = True

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "mutants"))

from journal import BREAKS  # noqa: E402

TREE = ROOT / "build" / "mutants"
BUILD = TREE / "build" / "quick"
# A year for each seed; what is broken is met within days.
TESTS = {"unit tests": ["bin/journal_tests", "--gtest_brief=1"], "soak": ["bin/soak", "1"]}
LONGEST = 900  # seconds, of a break that never ends


def stale():
    """What is to be replaced must be told from everything else."""
    for each in BREAKS:
        count = (ROOT / each.file).read_text().count(each.text)
        if count != 1:
            yield f"{each.name}: its text is {count} times in {each.file}"
        if each.text == each.instead:
            yield f"{each.name}: it changes nothing"


def copy():
    """Files that are as they were stay as they are, so that little is built a second time; those that
    are gone go."""
    names = subprocess.run(
        ["git", "-c", "safe.directory=*", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, capture_output=True, text=True, check=True).stdout.split("\0")
    for path in TREE.rglob("*"):
        name = path.relative_to(TREE)
        if path.is_file() and name.parts[0] != "build" and not (ROOT / name).is_file():
            path.unlink()
    for name in names:
        if (ROOT / name).is_file():
            put(TREE / name, (ROOT / name).read_bytes())


def put(path, content):
    if not path.is_file() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def build():
    subprocess.run(["cmake", "--preset", "quick"], cwd=TREE, check=True, stdout=subprocess.DEVNULL)
    made = subprocess.run(["cmake", "--build", "--preset", "quick", "--target", "soak", "journal_tests"],
                          cwd=TREE, capture_output=True, text=True)
    return "" if made.returncode == 0 else made.stdout + made.stderr


def who_fails():
    """The tests that fail, and what each of them said."""
    running = {
        name: subprocess.Popen([BUILD / command[0], *command[1:]], cwd=TREE, text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        for name, command in TESTS.items()}
    failed = {}
    for name, process in running.items():
        try:
            said = process.communicate(timeout=LONGEST)[0]
        except subprocess.TimeoutExpired:
            process.kill()
            said = process.communicate()[0] + "It did not end.\n"
        if process.returncode != 0:
            failed[name] = said
    return failed


def notices(each):
    """Tells what becomes of a break; False where the tests pass."""
    path = TREE / each.file
    whole = path.read_text()
    put(path, whole.replace(each.text, each.instead).encode())
    try:
        problem = build()
        failed = {} if problem else who_fails()
    finally:
        put(path, whole.encode())
    if problem:
        print(f"DOES NOT COMPILE  {each.name}\n{problem}", flush=True)
    elif failed:
        print(f"noticed      {each.name} ({', '.join(failed)})", flush=True)
    else:
        print(f"NOT NOTICED  {each.name}", flush=True)
    return bool(failed)


def main(wanted):
    problems = list(stale())
    print("".join(problem + "\n" for problem in problems), end="")
    unknown = set(wanted) - {each.name for each in BREAKS} - {"--texts"}
    if unknown:
        print("No break is called " + ", ".join(sorted(unknown)) + ".")
    if problems or unknown or "--texts" in wanted:
        return 1 if problems or unknown else 0
    copy()
    if problem := build():
        print(problem)
        return 1
    if failed := who_fails():
        print("Nothing is broken, and yet this fails:\n" + "\n".join(failed.values()))
        return 1
    chosen = [each for each in BREAKS if not wanted or each.name in wanted]
    noticed = sum(notices(each) for each in chosen)
    print(f"{noticed} of {len(chosen)} breaks were noticed.")
    return 0 if noticed == len(chosen) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
