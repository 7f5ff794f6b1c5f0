"""The checks that the compiler's own tools make."""

import concurrent.futures
import os
import shutil
import subprocess


class Missing(Exception):
    """The tool of that name is not installed."""


def tool(name):
    path = shutil.which(name)
    if path is None:
        raise Missing(name)
    return path


def check_format(names, root):
    run = subprocess.run(
        [tool("clang-format"), "--dry-run", "-Werror", "--style=file:" + str(root / ".clang-format"),
         *names],
        cwd=root, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
    )
    if run.returncode != 0:
        places = [line for line in run.stderr.splitlines() if ": error: " in line]
        yield "clang-format:\n" + "\n".join(places[:20] or [run.stderr])


def complaints(words, names, root):
    """What a checker that is run with these words says of the files, a line each."""
    run = subprocess.run([tool(words[0]), *words[1:], *names], cwd=root, capture_output=True,
                         stdin=subprocess.DEVNULL, text=True, check=False)
    if run.returncode != 0:
        yield words[0] + ":\n" + "\n".join((run.stdout + run.stderr).splitlines()[:20])


def check_shell(names, root):
    yield from complaints(["shellcheck", "--external-sources", "--format=gcc"], names, root)


def check_python(names, root):
    yield from complaints(["pyflakes3"], names, root)


def check_headers_alone(headers, root):
    """Every header compiles by itself; `headers` are pairs of a name and its include folders."""
    compiler = tool("g++")

    def offence(header):
        name, folders = header
        command = [compiler, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra",
                   *("-I" + str(root / folder) for folder in folders), "-x", "c++", "-"]
        run = subprocess.run(
            command, input='#include "%s"\n' % (root / name), capture_output=True, text=True,
            check=False,
        )
        if run.returncode == 0:
            return None
        first = next((line for line in run.stderr.splitlines() if "error:" in line), run.stderr)
        return "%s: does not compile by itself: %s" % (name, first)

    with concurrent.futures.ThreadPoolExecutor(min(2, os.cpu_count() or 1)) as workers:
        yield from filter(None, workers.map(offence, headers))
