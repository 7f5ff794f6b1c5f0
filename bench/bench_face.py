#!/usr/bin/env python3
"""Time to the first window, memory after the start and processor time per tick of the program,
beside an empty window of the same toolkit in the same run: PROGRAM EMPTY_WINDOW [ROWS], the file that
the rows go to as well."""

import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tests" / "outside"))

from desktop import DEADLINE, Desktop, Failure, end_with_parent, wait_for  # noqa: E402
from support import keys_of  # noqa: E402

STARTS = 15
TICK_SECONDS = 20
INTERVAL = 0.1
TITLE = "Velmars Tarvik"
INI = "[Settings]\nIsLocked=0\nRefreshInterval=100\n"


def without_accessibility(environment):
    return {
        key: value for key, value in environment.items()
        if key not in ("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "TARVIK_TEST_IDS")
    }


def has_window(desktop, title):
    answer = subprocess.run(
        ["xwininfo", "-name", title], env=desktop.environment, capture_output=True, text=True,
        check=False,
    )
    return "IsViewable" in answer.stdout


def start(desktop, command, title):
    """The process and the milliseconds until its window is on the screen."""
    begin = time.monotonic()
    process = subprocess.Popen(
        command, env=without_accessibility(desktop.environment),
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        preexec_fn=end_with_parent,
    )
    while not has_window(desktop, title):
        if process.poll() is not None or time.monotonic() - begin > DEADLINE:
            raise Failure("no window came: " + title)
        time.sleep(0.001)
    return process, (time.monotonic() - begin) * 1000


def memory(process):
    """Resident and proportional kilobytes."""
    values = {}
    for line in open("/proc/%d/smaps_rollup" % process.pid, encoding="ascii"):
        parts = line.split()
        if parts[0] in ("Rss:", "Pss:"):
            values[parts[0]] = int(parts[1])
    return values["Rss:"], values["Pss:"]


def processor_seconds(pid):
    """Processor time so far, in the scheduler's own count of nanoseconds, all threads."""
    total = 0
    for task in os.listdir("/proc/%d/task" % pid):
        with open("/proc/%d/task/%s/schedstat" % (pid, task), encoding="ascii") as file:
            total += int(file.read().split()[0])
    return total / 1e9


def stop(process):
    process.terminate()
    process.wait(10)


def started(desktop, *programs):
    """Of each the shortest time, and the usual resident and proportional memory. They are started in
    turn, so that whatever else the computer does meets all of them: (command, title, prepare)..."""
    figures = [([], [], []) for _ in programs]
    for _ in range(STARTS):
        for (command, title, prepare), (times, residents, proportionals) in zip(programs, figures):
            prepare()
            process, milliseconds = start(desktop, command, title)
            time.sleep(0.5)  # what is loaded after the first paint counts too
            resident, proportional = memory(process)
            times.append(milliseconds)
            residents.append(resident)
            proportionals.append(proportional)
            stop(process)
    return [(min(times), statistics.median(residents), statistics.median(proportionals))
            for times, residents, proportionals in figures]


def per_tick(pid):
    before = processor_seconds(pid)
    time.sleep(TICK_SECONDS)
    return (processor_seconds(pid) - before) / (TICK_SECONDS / INTERVAL) * 1e6


def keys(desktop, *names):
    subprocess.run(["xdotool", "key", *names], env=desktop.environment, check=True)


def ticks(desktop, copy, ini):
    """Microseconds per tick of 100 ms: waiting for a line, and with a line up.

    Accessibility would add its own cost, so the keyboard dials, and the file tells at the end
    whether a line was up."""
    ini.write_text(INI, encoding="ascii")
    process, _ = start(desktop, [copy, "/r"], TITLE)
    wait_for("the window in front", lambda: desktop.is_active(TITLE))
    offline = per_tick(process.pid)
    keys(desktop, "alt+a", "Home", "Down", "alt+c")  # the second entry, Ridge DSL
    time.sleep(3)  # the dial
    online = per_tick(process.pid)
    stop(process)
    text = ini.read_text(encoding="utf-8")
    record = keys_of(text, keys_of(text, "Settings").get("LastState", "Settings"))
    if int(record.get("Duration", 0)) < TICK_SECONDS * 1000:
        raise Failure("no line was up while it was measured")
    return offline, online


def main():
    program, empty = (pathlib.Path(name).resolve() for name in sys.argv[1:3])
    desktop = Desktop()
    try:
        folder = desktop.folder / "program"
        folder.mkdir()
        copy = shutil.copy(program, folder)
        ini = folder / "Tarvik.ini"
        floor, own = started(
            desktop, ([str(empty)], "Empty window", lambda: None),
            ([copy, "/r"], TITLE, lambda: ini.write_text(INI, encoding="ascii")))
        process, _ = start(desktop, [str(empty)], "Empty window")
        idle = per_tick(process.pid)
        stop(process)
        offline, online = ticks(desktop, copy, ini)
    finally:
        desktop.close()
    rows = (
        ("time to the first window, ms", own[0], floor[0]),
        ("resident memory, KiB", own[1], floor[1]),
        ("proportional memory, KiB", own[2], floor[2]),
        ("processor time per 100 ms, no line up, us", offline, idle),
        ("processor time per 100 ms, line up, us", online, idle),
    )
    print("%-44s %12s %14s" % ("", "tarvik-demo", "empty window"))
    for name, value, bare in rows:
        print("%-44s %12.1f %14.1f" % (name, value, bare))
    if len(sys.argv) > 3:
        with open(sys.argv[3], "a", encoding="utf-8") as file:
            for name, value, bare in rows:
                file.write("%s\t%f\t%f\tempty window\n" % (name, value, bare))


if __name__ == "__main__":
    main()
