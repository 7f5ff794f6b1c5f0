"""The checks that the compiler's own tools make."""

import concurrent.futures
import contextlib
import hashlib
import os
import re
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


def text_with_includes(name, folders, root, seen):
    """The texts of the file and of all that it includes of ours, once each."""
    if name in seen:
        return ""
    seen.add(name)
    text = (root / name).read_text(encoding="utf-8")
    for path in re.findall(r'^#include "([^"]+)"', text, re.MULTILINE):
        for folder in folders:
            if (root / folder / path).is_file():
                text += text_with_includes(os.path.normpath("%s/%s" % (folder, path)), folders, root, seen)
                break
    return text


def check_headers_alone(headers, root):
    """Every header compiles by itself; `headers` are pairs of a name and its include folders. What has
    compiled is remembered in build/lint, and compiled again when it or what it includes is another."""
    compiler = tool("g++")
    version = subprocess.run([compiler, "--version"], capture_output=True, check=False).stdout.decode()
    remembered = root / "build/lint/headers"
    good = set(remembered.read_text(encoding="ascii").split()) if remembered.exists() else set()

    def key_of(header):
        name, folders = header
        text = "\0".join([version, name, *folders, text_with_includes(name, folders, root, set())])
        return hashlib.sha256(text.encode()).hexdigest()

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

    keys = {header[0]: key_of(header) for header in headers}
    unknown = [header for header in headers if keys[header[0]] not in good]
    with concurrent.futures.ThreadPoolExecutor(min(2, os.cpu_count() or 1)) as workers:
        offences = dict(zip((name for name, _ in unknown), workers.map(offence, unknown)))
    with contextlib.suppress(OSError):  # where nothing can be written, all are compiled each time
        remembered.parent.mkdir(parents=True, exist_ok=True)
        remembered.write_text("\n".join(key for name, key in keys.items() if not offences.get(name)),
                              encoding="ascii")
    yield from filter(None, offences.values())
