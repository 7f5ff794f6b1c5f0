#!/usr/bin/env python3
"""Processor time of reading a real VPN's counters once: the program's tick, beside nmcli and
vnstatd on the same link in the same run, and the floor, an empty window of the same toolkit that wakes
as often: PROGRAM EMPTY_WINDOW [ROWS], the file that the rows go to as well. Run it inside the network
tests' world."""

import os
import pathlib
import resource
import shutil
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tests" / "outside"))

from bench_face import TITLE, processor_seconds, start, stop  # noqa: E402
from desktop import Desktop, Failure, wait_for  # noqa: E402

SECONDS = 30
INTERVAL = 1.0  # the program's own default
VPN = "testvpn"
VNSTAT_INTERVAL = 2  # the least that it takes
VNSTAT = """DatabaseDir "{folder}"
Interface "tun0"
PollInterval 2
UpdateInterval 2
UseLogging 0
"""


def pid_of(name):
    return int(subprocess.run(["pgrep", "-x", name], check=True, capture_output=True,
                              text=True).stdout.split()[0])


def nmcli(*arguments):
    subprocess.run(["nmcli", *arguments], check=True, capture_output=True)


def measured(title, readings, own, service):
    """Microseconds a reading."""
    print("%-30s %10.0f us a reading, NetworkManager %6.0f us" % (
        title, own / readings * 1e6, service / readings * 1e6))
    return own / readings * 1e6


def program_ticks(desktop, program, manager, aside):
    folder = desktop.folder / ("program-aside" if aside else "program")
    folder.mkdir()
    (folder / "Tarvik.ini").write_text("[Settings]\nIsLocked=0\nRefreshInterval=1000\n",
                                       encoding="ascii")
    process, _ = start(desktop, [shutil.copy(program, folder), "/r"], TITLE)
    wait_for("the question", lambda: desktop.is_active(TITLE + "."))
    subprocess.run(["xdotool", "key", "Return"], env=desktop.environment, check=True)
    wait_for("the window in front", lambda: desktop.is_active(TITLE))
    if aside:
        subprocess.run(["xdotool", "getactivewindow", "windowminimize"], env=desktop.environment,
                       check=True)
    time.sleep(2)
    own, service = processor_seconds(process.pid), processor_seconds(manager)
    time.sleep(SECONDS)
    own, service = processor_seconds(process.pid) - own, processor_seconds(manager) - service
    stop(process)
    return measured("Velmars Tarvik, put aside" if aside else "Velmars Tarvik, on the screen",
                    SECONDS / INTERVAL, own, service)


def empty_wakes(desktop, empty, manager):
    process, _ = start(desktop, [str(empty), "%d" % (INTERVAL * 1000)], "Empty window")
    subprocess.run(["xdotool", "getactivewindow", "windowminimize"], env=desktop.environment, check=True)
    time.sleep(2)
    own, service = processor_seconds(process.pid), processor_seconds(manager)
    time.sleep(SECONDS)
    own, service = processor_seconds(process.pid) - own, processor_seconds(manager) - service
    stop(process)
    return measured("an empty window, put aside", SECONDS / INTERVAL, own, service)


def nmcli_polls(manager):
    def children():
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime

    own, service = children(), processor_seconds(manager)
    for _ in range(int(SECONDS / INTERVAL)):
        nmcli("-t", "-f", "NAME,TYPE,STATE,DEVICE", "connection", "show", "--active")
        time.sleep(INTERVAL)
    measured("nmcli connection show", SECONDS / INTERVAL, children() - own,
             processor_seconds(manager) - service)


def vnstat_updates(desktop, manager):
    folder = desktop.folder / "vnstat"
    folder.mkdir()
    configuration = folder / "vnstat.conf"
    configuration.write_text(VNSTAT.format(folder=folder), encoding="ascii")
    subprocess.run(["vnstatd", "--initdb", "--config", str(configuration)], check=True,
                   stdout=subprocess.DEVNULL)
    subprocess.run(["vnstat", "--add", "-i", "tun0", "--config", str(configuration)], check=True,
                   stdout=subprocess.DEVNULL)
    process = subprocess.Popen(
        ["vnstatd", "--nodaemon", "--config", str(configuration)], stdout=subprocess.DEVNULL,
        stderr=subprocess.DEVNULL)
    time.sleep(2 * VNSTAT_INTERVAL)
    if process.poll() is not None:
        raise Failure("vnstatd did not stay")
    own, service = processor_seconds(process.pid), processor_seconds(manager)
    time.sleep(SECONDS)
    own, service = processor_seconds(process.pid) - own, processor_seconds(manager) - service
    stop(process)
    return measured("vnstatd", SECONDS / VNSTAT_INTERVAL, own, service)


def main():
    desktop = Desktop()
    try:
        manager = pid_of("NetworkManager")
        nmcli("connection", "up", VPN)
        program, empty = (pathlib.Path(name).resolve() for name in sys.argv[1:3])
        seen = program_ticks(desktop, program, manager, aside=False)
        aside = program_ticks(desktop, program, manager, aside=True)
        floor = empty_wakes(desktop, empty, manager)
        nmcli_polls(manager)
        other = vnstat_updates(desktop, manager)
    finally:
        subprocess.run(["nmcli", "connection", "down", VPN], capture_output=True, check=False)
        desktop.close()
    if len(sys.argv) > 3:
        with open(sys.argv[3], "a", encoding="utf-8") as file:
            for name, own in (("on the screen", seen), ("put aside", aside)):
                file.write("tick of a real VPN, %s, us\t%f\t%f\tvnstatd\n" % (name, own, other))
            file.write("tick of a real VPN, put aside, us\t%f\t%f\tempty window\n" % (aside, floor))


if __name__ == "__main__":
    os.environ.setdefault("LC_ALL", "C.UTF-8")
    main()
