#!/usr/bin/env python3
"""Takes the screenshots of the documents: FOLDER [linux] [windows]. Started by screenshots.sh."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "outside"))

from desktop import Desktop, Failure, Program, end_with_parent, wait_for  # noqa: E402
from screenshot_settings import LIMITED, PLANNED, QUIET, TICKING, WARNED, ini_of  # noqa: E402

LINUX_DEMO = ROOT / "build/release/bin/tarvik-demo"
WINDOWS_DEMO = ROOT / "build/windows/bin/tarvik-demo.exe"
ENTRY = "Ridge DSL"
STILL = {"TARVIK_DEMO_SEED": "1", "TARVIK_DEMO_AGE": "4632"}
READ_RECORD = 22

MAIN = "Velmars Tarvik"
STATISTICS = MAIN + " - Connection Statistics"
OPTIONS = MAIN + " - Options"
PLAN = MAIN + " - Plan"
WARNING = MAIN + " - Warning"
HISTORY = MAIN + " - History"
BOX = MAIN + "."
WINE_DESKTOP = "Own - Wine desktop"
SCREEN = (0, 0, 1024, 768)


class Camera:
    """Takes screenshots of windows on one display, with their frames."""

    def __init__(self, environment, folder, suffix):
        self.environment = environment
        self.folder = folder
        self.suffix = suffix

    def _ask(self, *command):
        return subprocess.run(
            command, env=self.environment, capture_output=True, check=False
        ).stdout

    def _window(self, title):
        found = self._ask("xdotool", "search", "--onlyvisible", "--name", "^%s$" % title)
        return found.decode().split()[-1] if found.split() else None

    def has(self, title):
        return self._window(title) is not None

    def wait(self, title):
        wait_for("the window " + title, lambda: self.has(title))

    def is_active(self, title):
        return self._ask("xdotool", "getactivewindow", "getwindowname").decode().strip() == title

    def area(self, title):
        """Left, top, width and height of the window with its frame."""
        window = self._window(title)
        told = self._ask("xwininfo", "-id", window).decode()
        x, y, width, height = (
            int(re.search(what + r":\s+(-?\d+)", told).group(1))
            for what in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        )
        frame = self._ask("xprop", "-notype", "-id", window, "_NET_FRAME_EXTENTS").decode()
        left, right, top, bottom = (int(word) for word in frame.split("=")[1].split(","))
        return x - left, y - top, width + left + right, height + top + bottom

    def look(self, area):
        left, top, width, height = area
        return self._ask("import", "-silent", "-window", "root", "-crop",
                         "%dx%d+%d+%d" % (width, height, left, top), "+repage", "ppm:-")

    def settled(self, area, still=1.0):
        """What is seen there once nothing has moved for so many seconds."""
        seen, since = self.look(area()), time.monotonic()

        def check():
            nonlocal seen, since
            now = self.look(area())
            if now != seen:
                seen, since = now, time.monotonic()
            return seen if time.monotonic() - since >= still else None

        return wait_for("a screenshot that stands still", check, 30)

    def take(self, name, title, also=lambda: True):
        wait_for("what the screenshot %s is to show" % name, also)
        self.save(name, self.settled(lambda: self.area(title)))

    def save(self, name, screenshot):
        target = self.folder / (name + self.suffix + ".png")
        subprocess.run(
            ["convert", "ppm:-", "-depth", "8", "-strip", "-define",
             "png:exclude-chunks=date,time,tIME", str(target)],
            input=screenshot, check=True,
        )
        print(target, flush=True)

    def key(self, *keys):
        subprocess.run(["xdotool", "key", "--delay", "60", *keys], env=self.environment, check=True)

    def pointer(self, *place):
        subprocess.run(["xdotool", "mousemove", *map(str, place)], env=self.environment, check=True)

    def click(self, *place):
        self.pointer(*place)
        subprocess.run(["xdotool", "click", "1"], env=self.environment, check=True)


# Linux -------------------------------------------------------------------------------------------

NOTE_SETTINGS = """[global]
font = "Noto Sans 10"
width = 300
origin = bottom-right
offset = 150x6
notification_limit = 1
icon_position = off
frame_width = 1
timeout = 600
[urgency_normal]
background = "#285577"
foreground = "#ffffff"
timeout = 600
"""


class Linux:
    def __init__(self, folder):
        self.desktop = Desktop("1000x760x24")
        # No service of this computer has a say in what the windows show.
        self.desktop.environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=/nowhere"
        self.camera = Camera(self.desktop.environment, folder, "")
        self.program = None

    def start(self, ini):
        home = pathlib.Path(tempfile.mkdtemp(prefix="program-", dir=self.desktop.folder))
        (home / "Tarvik.ini").write_text(ini, newline="")
        executable = shutil.copy(LINUX_DEMO, home / "tarvik-demo")
        self.program = Program(self.desktop, executable, **STILL)
        self.program.find("cmdQuit")
        self.camera.pointer(999, 0)

    def end(self):
        self.program.stop()

    def connect(self):
        program = self.program
        if program.text("lblMonitoring") != "Monitoring: active":
            program.press("cmdMonitor")
            program.wait_text("lblMonitoring", "Monitoring: active")
        program.choose("cboConnections", ENTRY)
        program.press("cmdConnect")
        self.camera.pointer(999, 0)
        program.wait_text("txtActiveConnection", lambda text: ENTRY in text)
        program.wait_text("txtBytesRcvd", lambda text: text != "0")

    def focus(self, name):
        self.program.find(name).grab_focus()

    def windows(self):
        camera = self.camera
        self.start(ini_of(QUIET))
        self.connect()
        self.focus("cmdConnect")
        camera.take("main-window", MAIN)
        self.end()
        self.statistics()
        self.options()

    def statistics(self):
        self.start(ini_of(QUIET))
        program = self.program
        self.connect()
        program.press("cmdStatistics")
        self.camera.wait(STATISTICS)
        program.press("chkActiveConnection")
        program.press("chkInternetState")
        program.wait_text("txtHostName", lambda text: text not in ("", " "))
        self.camera.pointer(999, 0)
        self.camera.take("statistics-window", STATISTICS)
        self.end()

    def options(self):
        self.start(ini_of(LIMITED))
        self.program.press("cmdOptions")
        self.camera.wait(OPTIONS)
        self.focus("cmdOK")
        self.camera.take("options-window", OPTIONS)
        self.end()
        self.plan()
        self.start(ini_of(WARNED))
        self.connect()
        self.camera.wait(WARNING)
        self.camera.take("warning-window", WARNING)
        self.end()

    def plan(self):
        """A page that looks the same on every day."""
        self.start(ini_of(QUIET) + PLANNED)
        self.program.press("cmdOptions")
        self.camera.wait(OPTIONS)
        self.program.press("cmdPlan")
        self.camera.wait(PLAN)
        self.program.choose("cboPage", "What happens on the way")
        self.camera.pointer(999, 0)
        self.focus("cmdOK")
        self.camera.take("plan-window", PLAN)
        self.end()

    def tray(self):
        settings = self.desktop.folder / "dunstrc"
        settings.write_text(NOTE_SETTINGS)
        notes = self.desktop._start(["dunst", "-conf", str(settings)])
        panel = self.desktop.open_panel()
        self.start(ini_of(TICKING))
        self.connect()
        self.desktop.open_menu()
        self.camera.save("tray", self.camera.settled(lambda: (454, 604, 546, 156)))
        self.program.key("Escape")
        self.end()
        self.desktop.close_panel(panel)
        notes.terminate()

    def icons(self):
        """The three lamps on a light and on a dark panel, enlarged three times."""
        rows = []
        for colour in ("0xdddcd4", "0x222222"):
            panel = self.desktop._start(
                ["trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request",
                 "--heighttype", "pixel", "--height", "16", "--transparent", "true",
                 "--alpha", "0", "--tint", colour])
            wait_for("the panel", self.desktop._panel_is_there)
            self.start(ini_of(QUIET))
            row = [self.lamp(rows)]
            self.program.press("cmdMonitor")
            self.program.wait_text("lblMonitoring", "Monitoring: active")
            row.append(self.lamp(row))
            self.connect()
            row.append(self.lamp(row))
            rows += row
            self.end()
            self.desktop.close_panel(panel)
        with tempfile.TemporaryDirectory() as folder:
            names = []
            for number, screenshot in enumerate(rows):
                names.append(folder + "/%d.ppm" % number)
                pathlib.Path(names[-1]).write_bytes(screenshot)
            self.camera.save("icons", subprocess.run(
                ["montage", *names, "-filter", "point", "-resize", "300%", "-tile", "3x2",
                 "-geometry", "96x72+0+0", "-background", "none", "ppm:-"],
                capture_output=True, check=True).stdout)

    def lamp(self, others):
        """The icon as the panel shows it, once it is none of the others."""
        def screenshot():
            seen = self.camera.settled(self.desktop.icon_area, 0.5)
            return seen if seen not in others else None

        return wait_for("another screenshot of the icon", screenshot)

    def history(self):
        camera = self.camera
        self.start(ini_of(QUIET))
        program = self.program
        program.press("cmdHistory")
        camera.wait(HISTORY)
        program.press("cmdImport")
        program.answer("Yes")
        wait_for("the records", lambda: program.is_enabled("cboDataToShow"))
        for name, entry in (("line", "plot as line"), ("bars", "plot as bars"),
                            ("area", "plot as area"), ("step", "plot as step")):
            if name != "line":
                program.choose("cboChartType", entry)
            camera.pointer(999, 0)
            self.focus("mscHistory")
            program.key("Home", *["Right"] * (READ_RECORD - 1))
            camera.take("history-" + name, HISTORY)
        for name, key, shown in (("log", "alt+s", "cmdExport"),
                                    ("addresses", "alt+i", "cmdSortByTime")):
            program.key(key)
            camera.take("history-" + name, HISTORY, lambda: program.is_showing(shown))
        self.end()

    def all(self):
        self.windows()
        self.history()
        self.tray()
        self.icons()

    def close(self):
        if self.program is not None:
            self.program.stop()
        self.desktop.close()


# Windows -----------------------------------------------------------------------------------------

class Windows:
    """The program under Wine, worked with the keyboard alone."""

    def __init__(self, folder):
        self.desktop = Desktop("1024x768x24")
        self.camera = Camera(self.desktop.environment, folder, "-windows")
        self.process = None

    def start(self, ini, *arguments, **environment):
        home = pathlib.Path(tempfile.mkdtemp(prefix="program-", dir=self.desktop.folder))
        (home / "Tarvik.ini").write_text(ini, newline="")
        executable = shutil.copy(WINDOWS_DEMO, home)
        self.process = subprocess.Popen(
            [str(ROOT / "scripts/wine32.sh"), "run", str(executable), *arguments],
            env={**self.desktop.environment, **STILL, "WINE32_TIMEOUT": "300", **environment},
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True, preexec_fn=end_with_parent,
        )
        title = WINE_DESKTOP if "WINE32_DESKTOP" in environment else MAIN
        wait_for("the window", lambda: self.camera.has(title), 60)
        wait_for("the focus", lambda: self.camera.is_active(title))
        self.camera.pointer(1023, 0)
        self.settle(title)

    def end(self):
        if self.process is not None and self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGTERM)
            self.process.wait()
        self.process = None
        wait_for("the end of the program",
                 lambda: not self.camera.has(MAIN) and not self.camera.has(WINE_DESKTOP))

    def settle(self, title):
        return self.camera.settled(lambda: self.camera.area(title), 0.5)

    def press_until(self, what, condition, patience, *keys):
        """Presses keys, and again each time that nothing has come of it for so many seconds."""
        pressed = float("-inf")

        def is_so():
            nonlocal pressed
            if condition():
                return True
            if time.monotonic() > pressed + patience:
                pressed = time.monotonic()
                self.camera.key(*keys)
            return False

        wait_for(what, is_so)

    def work(self, title, *keys):
        """Presses keys and waits until the window looks otherwise and stands still."""
        before = self.settle(title)
        # A window that has just got the keyboard under a busy Wine misses a key now and then.
        self.press_until("an effect of " + " ".join(keys),
                         lambda: self.camera.look(self.camera.area(title)) != before, 10, *keys)
        self.settle(title)

    def open(self, key, title):
        """Opens a window by a key; the program takes none while it dials, so it may be pressed anew."""
        self.press_until("the window " + title, lambda: self.camera.has(title), 5, key)
        wait_for("the focus", lambda: self.camera.is_active(title))

    def connect(self):
        self.work(MAIN, "alt+a")
        self.work(MAIN, "Home", "Down")
        self.work(MAIN, "alt+c")
        # The window stands still while the dial goes on, and again when the line is up.
        self.camera.settled(lambda: self.camera.area(MAIN), 3)

    def windows(self):
        camera = self.camera
        self.start(ini_of(QUIET))
        self.work(MAIN, "alt+m")
        self.connect()
        camera.take("main-window", MAIN)
        self.end()
        self.start(ini_of(QUIET))
        self.work(MAIN, "alt+m")
        self.connect()
        self.open("alt+s", STATISTICS)
        self.work(STATISTICS, "alt+e")
        self.work(STATISTICS, "alt+n")
        camera.take("statistics-window", STATISTICS)
        self.end()
        self.start(ini_of(LIMITED))
        self.open("alt+o", OPTIONS)
        camera.take("options-window", OPTIONS)
        self.end()
        self.start(ini_of(QUIET) + PLANNED)
        self.open("alt+o", OPTIONS)
        self.open("alt+p", PLAN)
        self.work(PLAN, "alt+s")
        self.work(PLAN, "End")
        camera.take("plan-window", PLAN)
        self.end()
        self.start(ini_of(WARNED))
        self.work(MAIN, "alt+m")
        self.work(MAIN, "alt+a")
        self.work(MAIN, "Home", "Down")
        self.open("alt+c", WARNING)
        camera.take("warning-window", WARNING)
        self.end()

    def history(self):
        camera = self.camera
        self.start(ini_of(QUIET))
        self.open("alt+h", HISTORY)
        camera.key("alt+m")
        wait_for("the question", lambda: camera.is_active(BOX))
        before = self.settle(HISTORY)
        camera.key("Return")
        wait_for("the records", lambda: camera.look(camera.area(HISTORY)) != before)
        left, top, width, height = camera.area(HISTORY)
        camera.click(left + width // 2, top + height // 2)
        camera.pointer(1023, 0)
        self.settle(HISTORY)
        for name in ("line", "bars", "area", "step"):
            if name != "line":
                self.work(HISTORY, "Tab")
                self.work(HISTORY, "Down")
                self.work(HISTORY, "shift+Tab")
            else:
                self.work(HISTORY, "Home", *["Right"] * (READ_RECORD - 1))
            camera.take("history-" + name, HISTORY)
        self.work(HISTORY, "alt+s")
        camera.take("history-log", HISTORY)
        self.work(HISTORY, "alt+i")
        camera.take("history-addresses", HISTORY)
        self.end()

    def tray(self):
        """The icon in the bar of a desktop of Wine's own."""
        self.start(ini_of(TICKING), WINE32_DESKTOP="1")
        self.camera.settled(lambda: SCREEN, 5)
        self.work(WINE_DESKTOP, "alt+m")
        self.work(WINE_DESKTOP, "alt+a")
        self.work(WINE_DESKTOP, "Home", "Down")
        self.work(WINE_DESKTOP, "alt+c")
        self.camera.save("tray", self.camera.settled(lambda: (714, 648, 310, 120), 3))
        self.end()

    def all(self):
        self.windows()
        self.history()
        self.tray()

    def close(self):
        try:
            self.end()
        finally:
            self.desktop.close()


def main():
    folder = pathlib.Path(sys.argv[1])
    faces = sys.argv[2:] or ["linux", "windows"]
    for face in faces:
        name, _, part = face.partition(":")
        photographer = {"linux": Linux, "windows": Windows}[name](folder)
        try:
            getattr(photographer, part or "all")()
        except Failure as failure:
            photographer.camera.save(
                "failure", photographer.camera.look((0, 0, 1024, 768)))
            print("%s: %s" % (face, failure), file=sys.stderr)
            return 1
        finally:
            photographer.close()
    return 0


if __name__ == "__main__":
    sys.exit(main())
