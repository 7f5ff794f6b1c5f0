#!/usr/bin/env python3
"""Plays one whole session with the demo program on a virtual display: PROGRAM OUTPUT_FOLDER."""

import pathlib
import shutil
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "tests" / "outside"))

from desktop import Desktop, Failure, Program  # noqa: E402

ENTRY = "Ridge DSL"
FIGURES = (
    ("sent", "txtBytesSent", "txtBytesSentTotal"),
    ("received", "txtBytesRcvd", "txtBytesRcvdTotal"),
    ("duration", "txtDurationCurrent", "txtDurationTotal"),
)


def some(text):
    return text not in ("", "0", "00:00:00:000")


def print_figures(program, when):
    print(when)
    for name, current, total in FIGURES:
        print("  %-9s current %12s   total %12s" % (name, program.text(current), program.text(total)))


def play(program, desktop, screenshot):
    print("Two notices, which come at every first run, while there is no file yet:")
    for _ in range(2):
        print("  " + program.box_text().replace("\n", " "))
        program.answer("OK")
    program.press("cmdMonitor")
    program.wait_text("lblMonitoring", "Monitoring: active")
    program.choose("cboConnections", ENTRY)
    print("Connecting to " + ENTRY)
    program.press("cmdConnect")
    program.wait_text("txtActiveConnection", lambda text: ENTRY in text)
    print("Connected: " + program.text("txtActiveConnection"))
    program.wait_text("txtBytesRcvd", lambda text: len(text) > 8)
    desktop.screenshot(screenshot)
    print_figures(program, "While connected:")
    program.press("cmdDisconnect")
    program.wait_text("txtActiveConnection", "")
    program.wait_text("txtBytesRcvdTotal", some)
    print_figures(program, "After hanging up:")
    program.press("cmdMonitor")
    program.wait_text("lblMonitoring", "Monitoring: inactive")
    program.press("cmdQuit")
    if program.wait_exit() != 0:
        raise Failure("the program ended with an error")


def main():
    executable, output = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    output.mkdir(parents=True, exist_ok=True)
    screenshot, ini = output / "session.png", output / "Tarvik.ini"
    desktop = Desktop()
    program = None
    try:
        folder = desktop.folder / "program"
        folder.mkdir()
        program = Program(desktop, shutil.copy(executable, folder))
        play(program, desktop, screenshot)
        shutil.copy(folder / "Tarvik.ini", ini)
    except Failure as failure:
        desktop.screenshot(output / "failure.png")
        print("The session failed: %s (see %s)" % (failure, output / "failure.png"))
        return 1
    finally:
        if program is not None:
            program.stop()
        desktop.close()
    print("Screenshot: %s" % screenshot)
    print("INI file: %s" % ini)
    return 0


if __name__ == "__main__":
    sys.exit(main())
