"""A virtual desktop and the program on it, driven and read through accessibility as a person with a
screen reader would use it."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from displays import WaylandDisplay, XDisplay  # noqa: E402
from note_service import NoteService  # noqa: E402
from processes import (  # noqa: E402
    DEADLINE, Failure, end_with_parent, start, stop, threads_of, wait_for, wait_for_rest,
)


def powerless():
    """Words before a command that take root's power over closed folders from it; skips the test
    where that cannot be done."""
    if os.getuid() != 0:
        return []
    words = ["setpriv", "--bounding-set=-all", "--inh-caps=-all"]
    if subprocess.run([*words, "true"], check=False, capture_output=True).returncode != 0:
        raise unittest.SkipTest("nothing is closed to root, and its powers cannot be dropped here")
    return words


class Desktop(NoteService):
    """A display with a window manager and a session bus of its own; end it with close().

    TARVIK_DESKTOP=wayland makes it one of Wayland. Tests that look at it with tools of X are then
    skipped: where a window is minimised or active, and a panel that embeds icons."""

    def __init__(self, screen="1000x700x24"):
        self.wayland = os.environ.get("TARVIK_DESKTOP") == "wayland"
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvik-desktop-"))
        self.processes = []
        self.display = None
        self.clicks = 0
        self.environment = {
            key: value
            for key, value in os.environ.items()
            if not key.startswith(("XDG_", "DBUS_", "QT_", "LC_", "DISPLAY", "WAYLAND_"))
        }
        for name in ("runtime", "home"):
            (self.folder / name).mkdir(mode=0o700)
        self.prepare_notes(self.folder / "home")
        self.environment.update(
            HOME=str(self.folder / "home"),
            XDG_RUNTIME_DIR=str(self.folder / "runtime"),
            LC_ALL="C.UTF-8",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            TARVIK_TEST_IDS="1",
        )
        try:
            self._start_services(screen)
        except BaseException:
            self.close()
            raise

    def _start_services(self, screen):
        self.display = (WaylandDisplay if self.wayland else XDisplay)(self.environment, screen)
        self.environment.update(self.display.environment)
        self._start_bus()
        # The accessibility library reads these when it is first used.
        for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
            os.environ[name] = self.environment[name]
        if not self.wayland:
            # A window that comes while the window manager starts may be lost for good.
            ready = self.folder / "window-manager-ready"
            self._start(["openbox", "--startup", "touch '%s'" % ready])
            wait_for("the window manager", ready.exists)

    def _start(self, command, **options):
        process = start(command, self.environment, **options)
        self.processes.append(process)
        return process

    def _only_on_x(self, what):
        if self.wayland:
            raise unittest.SkipTest("%s can only be seen on a display of X" % what)

    def _start_bus(self):
        bus = self._start(
            ["dbus-daemon", "--session", "--print-address", "--nofork"], stdout=subprocess.PIPE
        )
        address = bus.stdout.readline().decode().strip()
        if not address:
            raise Failure("the session bus did not start")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def screenshot(self, path):
        subprocess.run(
            ["import", "-silent", "-window", "root", str(path)], env=self.environment, check=True
        )

    def is_iconic(self, title):
        """True when the window of that title is minimised."""
        self._only_on_x("a minimised window")
        answer = subprocess.run(
            ["xprop", "-name", title, "WM_STATE"],
            env=self.environment, capture_output=True, text=True, check=False,
        )
        return "Iconic" in answer.stdout

    def is_active(self, title):
        """True when the window of that title has the user's attention."""
        self._only_on_x("the active window")
        answer = subprocess.run(
            ["xdotool", "getactivewindow", "getwindowname"],
            env=self.environment, capture_output=True, text=True, check=False,
        )
        return answer.stdout.strip() == title

    def size_of(self, title):
        """Width and height of the window of that title, without its frame."""
        answer = subprocess.run(
            ["xdotool", "getwindowgeometry", "--shell", self.window_called(title)],
            env=self.environment, capture_output=True, text=True, check=True,
        )
        place = dict(line.split("=") for line in answer.stdout.split())
        return int(place["WIDTH"]), int(place["HEIGHT"])

    def window_called(self, title):
        """The number of the window of that title, once it is there."""
        self._only_on_x("a window's number")
        return wait_for(
            "the window " + title,
            lambda: (self._windows("--name", "^" + re.escape(title) + "$") or [None])[0],
        )

    def activate(self, title):
        """Brings the window of that title back and to the front, as a list of windows does."""
        self._only_on_x("the active window")
        subprocess.run(
            ["xdotool", "search", "--name", "^" + re.escape(title) + "$", "windowactivate"],
            env=self.environment, check=True,
        )
        wait_for("the window in front", lambda: self.is_active(title))

    def _numbers(self, *words):
        """The windows that a property names, in its order."""
        answer = subprocess.run(
            ["xprop", *words], env=self.environment, capture_output=True, text=True, check=True
        )
        return [int(number, 16) for number in re.findall("0x[0-9a-f]+", answer.stdout)]

    def stands_before(self, upper, lower):
        """True when the window of that title covers the other where they meet."""
        order = self._numbers("-root", "_NET_CLIENT_LIST_STACKING")
        places = [order.index(int(self.window_called(title))) for title in (upper, lower)]
        return places[0] > places[1]

    def belongs_to(self, title, owner):
        """True when the window of that title is one that passes, before the other."""
        owners = self._numbers("-id", self.window_called(title), "WM_TRANSIENT_FOR")
        return owners == [int(self.window_called(owner))]

    # The panel and the notes --------------------------------------------------------------

    def open_panel(self):
        """Starts a panel that embeds icons; the process, to be ended with close_panel()."""
        self._only_on_x("a panel that embeds icons")
        panel = self._start(
            ["trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request",
             "--heighttype", "pixel", "--height", "24", "--iconspacing", "2"]
        )
        wait_for("the panel", self._panel_is_there)
        return panel

    def close_panel(self, panel):
        panel.terminate()
        panel.wait()
        self.processes.remove(panel)
        wait_for("the panel to go", lambda: not self._panel_is_there())

    def _panel_is_there(self):
        return bool(self._windows("--class", "trayer"))

    def _windows(self, *what):
        answer = subprocess.run(
            ["xdotool", "search", "--onlyvisible", *what],
            env=self.environment, capture_output=True, text=True, check=False,
        )
        return answer.stdout.split()

    def areas_called(self, title):
        """Left, top, width and height of each visible window of that title."""
        return list(self._areas("--name", "^" + re.escape(title) + "$"))

    def _areas(self, *what):
        """Left, top, width and height of each visible window of the program, or of those told."""
        for window in self._windows(*(what or ("--classname", "tarvik-demo"))):
            answer = subprocess.run(
                ["xdotool", "getwindowgeometry", "--shell", window],
                env=self.environment, capture_output=True, text=True, check=False,
            )
            place = dict(line.split("=") for line in answer.stdout.split())
            yield tuple(int(place[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def icon_area(self):
        """Left, top, width and height of the only icon in the panel, once it has come to rest there."""
        return wait_for_rest(
            "the icon in the panel",
            lambda: next((area for area in self._areas() if 8 <= area[2] <= 32), None),
        )

    def open_menu(self):
        """Clicks the icon and waits for its menu, which accessibility does not show."""
        self.click_icon(3)
        self.wait_for_menu()

    def wait_for_menu(self):
        """Until one is open; no other window of the program's is so narrow."""
        wait_for("the menu", lambda: any(80 <= area[2] <= 300 for area in self._areas()))

    def click_icon(self, button):
        left, top, width, height = self.icon_area()
        # Two clicks on one place would be a double click.
        self.clicks += 1
        place = left + width * (1 + self.clicks % 2 * 2) // 4
        subprocess.run(
            ["xdotool", "mousemove", str(place), str(top + height // 2),
             "click", str(button)],
            env=self.environment, check=True,
        )

    def icon_image(self):
        """The points of the icon as the panel shows it, as one number each."""
        left, top, width, height = self.icon_area()
        answer = subprocess.run(
            ["import", "-silent", "-window", "root", "-crop",
             "%dx%d+%d+%d" % (width, height, left, top), "+repage", "rgb:-"],
            env=self.environment, capture_output=True, check=True,
        )
        points = answer.stdout
        return [tuple(points[i:i + 3]) for i in range(0, len(points), 3)]

    def close(self):
        for process in reversed(self.processes):
            stop(process)
        if self.display is not None:
            self.display.close()
        shutil.rmtree(self.folder, ignore_errors=True)


class NoEntry(Failure):
    """A list that is open lacks an entry."""


class Program:
    """One running copy of the program: an executable, or a command that becomes one."""

    def __init__(self, desktop, command, *arguments, **environment):
        self.environment = {**desktop.environment, **environment}
        if isinstance(command, (str, pathlib.Path)):
            command = [str(command)]
        descriptor, self.errors = tempfile.mkstemp(prefix="errors-", dir=desktop.folder)
        with os.fdopen(descriptor, "wb") as errors:
            self.process = subprocess.Popen(
                [*command, *arguments],
                env=self.environment,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.DEVNULL,
                stderr=errors,
                preexec_fn=end_with_parent,
            )

    # What is on the screen ------------------------------------------------------------------

    def _application(self):
        root = Atspi.get_desktop(0)
        for index in range(root.get_child_count()):
            child = root.get_child_at_index(index)
            if child is not None and child.get_process_id() == self.process.pid:
                return child
        return None

    def _walk(self, node):
        yield node
        for index in range(min(node.get_child_count(), 200)):
            child = node.get_child_at_index(index)
            if child is not None:
                yield from self._walk(child)

    def _find(self, name):
        application = self._application()
        if application is None:
            return None
        application.clear_cache()
        return self._find_below(application, name)

    def _find_below(self, top, name):
        for node in self._walk(top):
            if node.get_description() == "id:" + name:
                return node
        return None

    def _wait_for(self, what, condition):
        """As `wait_for`, but in vain at once when the program has ended."""

        def check():
            if not self.running():
                raise Failure(
                    "the program ended with %d while %s was waited for; it wrote:\n%s"
                    % (self.process.returncode, what, self.written())
                )
            return condition()

        return wait_for(what, check)

    def find(self, name):
        """The widget of that control name."""
        return self._wait_for("the control " + name, lambda: self._find(name))

    def is_there(self, name):
        return self._find(name) is not None

    def text(self, name):
        """The text of a box, the caption of a label or button, the chosen entry of a list."""
        node = self.find(name)
        if "Text" in node.get_interfaces() and node.get_role_name() == "text":
            return Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))
        return node.get_name()

    def texts_within(self, name):
        """The texts of all boxes of a window."""
        return [Atspi.Text.get_text(node, 0, Atspi.Text.get_character_count(node))
                for node in self._walk(self.find(name)) if node.get_role_name() == "text"]

    def name(self, name):
        return self.find(name).get_name()

    def is_enabled(self, name):
        return self.find(name).get_state_set().contains(Atspi.StateType.SENSITIVE)

    def is_ticked(self, name):
        return self.find(name).get_state_set().contains(Atspi.StateType.CHECKED)

    def is_showing(self, name):
        node = self._find(name)
        return node is not None and node.get_state_set().contains(Atspi.StateType.SHOWING)

    def wait_text(self, name, wanted):
        """Waits until the text is this one, or fits the function."""
        fits = wanted if callable(wanted) else lambda text: text == wanted

        def check():
            text = self.text(name)
            return (text or " ") if fits(text) else None

        return wait_for("another text of " + name, check)

    # What the user does ---------------------------------------------------------------------

    @staticmethod
    def _act(node):
        Atspi.Action.do_action(node, 0)

    def press(self, name):
        self._act(self.find(name))

    def press_within(self, window, name):
        """For a control whose name several windows have."""
        self._act(self._find_below(self.find(window), name))

    def choose(self, name, entry):
        """Opens a list with a click and chooses an entry with the keyboard."""
        self.click(name)
        wait_for("the open list", lambda: self.is_open(name))
        entries = self.entries(name)
        if entry not in entries:
            raise NoEntry("no entry %s in %s" % (entry, entries))
        self.key("Home", *["Down"] * entries.index(entry), "Return")
        self.wait_text(name, entry)

    def entries(self, name):
        """Of a list, open or not."""
        return [
            node.get_name() for node in self._walk(self.find(name))
            if node.get_role_name() == "list item"
        ]

    def is_open(self, name):
        # Its entries say that they are showing also while it is closed.
        return self.find(name).get_state_set().contains(Atspi.StateType.EXPANDED)

    def click(self, name):
        """A real click in the middle of the control, once its window has come to rest."""
        x, y = wait_for_rest("the place of " + name, lambda: self._middle_on_screen(name))
        subprocess.run(
            ["xdotool", "mousemove", str(x), str(y), "click", "1"],
            env=self.environment,
            check=True,
        )

    def _middle_on_screen(self, name):
        """None as long as the window manager has not shown the control's window."""
        node = self.find(name)
        if not self._is_shown_by_manager(node):
            return None
        area = node.get_extents(Atspi.CoordType.SCREEN)
        return area.x + area.width // 2, area.y + area.height // 2

    def _is_shown_by_manager(self, node):
        """That of X: on Wayland no program knows where its windows are."""
        if "WAYLAND_DISPLAY" in self.environment:
            return True
        while node.get_parent().get_role_name() != "application":
            node = node.get_parent()
        search = ["xdotool", "search", "--onlyvisible", "--name", "^%s$" % re.escape(node.get_name())]
        found = subprocess.run(search, env=self.environment, check=False, stdout=subprocess.DEVNULL)
        return found.returncode == 0

    def key(self, *keys):
        subprocess.run(["xdotool", "key", *keys], env=self.environment, check=True)

    def type(self, text):
        subprocess.run(["xdotool", "type", text], env=self.environment, check=True)

    # Message boxes --------------------------------------------------------------------------

    def _box(self):
        box = self._find("msgBox")
        return box if box is not None and self.is_showing("msgBox") else None

    def box_text(self):
        """The text of the open message box."""
        return self._wait_for("a message box", self._box_text)

    def _box_text(self):
        box = self._box()
        if box is None:
            return None
        for node in self._walk(box):
            if node.get_role_name() == "label" and node.get_name():
                return node.get_name()
        return None

    def answer(self, button):
        """Presses a button of the open box and waits until that box has gone."""
        box = self._wait_for("a message box", self._box)

        def find_button():
            for node in self._walk(box):
                if node.get_role_name() == "push button":
                    if node.get_name().replace("&", "") == button:
                        return node
            return None

        text = self.box_text()
        self._act(self._wait_for("the button " + button, find_button))
        wait_for("the box to go", lambda: not self.running() or self._box_text() != text)

    def expect_box(self, text, button):
        """Checks the open box to the letter and answers it."""
        shown = self.box_text()
        if shown != text:
            raise Failure("the box says\n%s\ninstead of\n%s" % (shown, text))
        self.answer(button)

    # The process ----------------------------------------------------------------------------

    def end(self, number=signal.SIGTERM):
        """Sends a signal and gives the exit code, negative for one that killed it."""
        self.process.send_signal(number)
        return self.wait_exit()

    def wait_exit(self):
        """The exit code, once the program has ended by itself."""
        try:
            return self.process.wait(DEADLINE)
        except subprocess.TimeoutExpired:
            raise Failure("the program did not end; " + threads_of(self.process.pid)) from None

    def running(self):
        return self.process.poll() is None

    def written(self):
        """What the program has written to its standard error."""
        return pathlib.Path(self.errors).read_text(encoding="utf-8", errors="replace")

    def stop(self):
        """Makes sure that nothing is left of it."""
        if self.running():
            self.process.kill()
        self.process.wait()
