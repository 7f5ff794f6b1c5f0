"""No service of the desktop holds the window up: mute, slow, halted, or talking nonsense, at the
start or later. Each of these held it for 25 seconds or for good."""

import contextlib
import os
import pathlib
import signal
import socket
import subprocess
import sys
import threading
import time
import unittest

from gi.repository import Gio, GLib

import selection_holder
from desktop import wait_for
from displays import FarDisplay
from event_loop import EventLoop
from faulty_service import FaultyService
from processes import start, stop
from support import ProgramTest

LONGEST_WAIT = 0.2  # seconds that the window may wait for anybody but its user
LONGEST = 5.0  # seconds for what takes a fraction of one, and takes 25 where it waits


def owner_of(name, address):
    """The number of the process that has the name on the bus of that address."""
    flags = (
        Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    )
    bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
    answer = bus.call_sync(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), None, 0, 5000, None,
    )
    bus.close_sync(None)
    return answer.unpack()[0]


class MuteSocket:
    """Takes every connection and never says a word, until close()."""

    def __init__(self, path):
        self.path = str(path)
        self.taken = []
        self.listening = socket.socket(socket.AF_UNIX)
        self.listening.bind(self.path)
        self.listening.listen()
        self.thread = threading.Thread(target=self._take, daemon=True)
        self.thread.start()

    def _take(self):
        with contextlib.suppress(OSError):
            while True:
                self.taken.append(self.listening.accept()[0])

    def close(self):
        with contextlib.suppress(OSError):
            self.listening.shutdown(socket.SHUT_RDWR)
        self.listening.close()
        self.thread.join()
        for connection in self.taken:
            connection.close()


class MuteServiceTest(ProgramTest):
    @property
    def address(self):
        return self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"]

    @contextlib.contextmanager
    def without_delay(self, what):
        begin = time.monotonic()
        yield
        self.assertLess(time.monotonic() - begin, LONGEST, what)

    def watcher(self, kind):
        service = FaultyService(self.address, kind)
        self.addCleanup(service.close)
        return service

    @staticmethod
    @contextlib.contextmanager
    def halted(process):
        """While the process of that number is halted."""
        os.kill(process, signal.SIGSTOP)
        try:
            yield
        finally:
            os.kill(process, signal.SIGCONT)

    def bus(self):
        """The number of the session bus's process."""
        return next(
            each.pid for each in self.desktop.processes if each.args[0] == "dbus-daemon"
        )

    @staticmethod
    def change_the_lamp(program):
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: active")
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: inactive")

    @staticmethod
    def wait_for_a_note(program):
        """The first megabyte in both directions is told in one."""
        program.wait_text(
            "txtBytesRcvd", lambda text: int(text.replace(",", "") or 0) > 1_500_000
        )

    def start_without_delay(self, **environment):
        with self.without_delay("the start"):
            return self.start_quietly(**environment)

    def assert_it_goes_on(self, program):
        with self.without_delay("two changes of the lamp"):
            self.change_the_lamp(program)
        with self.without_delay("the end"):
            self.assertEqual(program.end(), 0)


class FaultyWatcherTest(MuteServiceTest):
    def check_from_the_start(self, kind):
        self.watcher(kind)

        program = self.start_without_delay()

        self.assert_it_goes_on(program)

    def check_later(self, kind):
        program = self.start_without_delay()
        watcher = self.watcher(kind)
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        self.assert_it_goes_on(program)

    def test_a_mute_one_from_the_start(self):
        self.check_from_the_start("mute")

    def test_a_slow_one_from_the_start(self):
        self.check_from_the_start("slow")

    def test_one_that_talks_nonsense_from_the_start(self):
        self.check_from_the_start("nonsense")

    def test_one_that_refuses_and_does_not_tell_what_it_can_do_from_the_start(self):
        self.check_from_the_start("refusing")

    def test_a_mute_one_later(self):
        self.check_later("mute")

    def test_a_slow_one_later(self):
        self.check_later("slow")

    def test_one_that_talks_nonsense_later(self):
        self.check_later("nonsense")

    def test_one_that_refuses_and_does_not_tell_what_it_can_do_later(self):
        self.check_later("refusing")

    def test_one_that_is_halted_after_it_has_taken_the_item(self):
        watcher = self.watcher("panel")
        program = self.start_without_delay()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        watcher.halt()

        self.assert_it_goes_on(program)

    def test_a_mute_one_is_asked_once_however_often_the_lamp_changes(self):
        watcher = self.watcher("mute")
        program = self.start_quietly()

        for _ in range(3):
            self.change_the_lamp(program)

        self.assertEqual(
            sorted(watcher.calls), ["Get", "Introspect", "RegisterStatusNotifierItem"]
        )


class HaltedProcessTest(MuteServiceTest):
    def test_the_notification_service(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        self.desktop.forget_notes()  # the first question starts it
        with self.halted(owner_of("org.freedesktop.Notifications", self.address)):
            program = self.start_without_delay()
            self.connect(program, "Skylark Mobile")

            with self.without_delay("the ticks"):
                self.wait_for_a_note(program)

            with self.without_delay("the end"):
                self.assertEqual(program.end(), 0)

    def test_the_bus_of_accessibility(self):
        program = self.start_without_delay()
        launcher = owner_of("org.a11y.Bus", self.address)
        children = pathlib.Path("/proc/%d/task/%d/children" % (launcher, launcher)).read_text()

        with contextlib.ExitStack() as halts:
            for process in [launcher, *map(int, children.split())]:
                halts.enter_context(self.halted(process))
            # Nobody can read the window now; what ends is not held up.
            program.key("alt+m")
            with self.without_delay("the end"):
                self.assertEqual(program.end(), 0)

    def test_the_session_bus_after_the_panel_has_taken_the_item(self):
        watcher = self.watcher("panel")
        program = self.start_without_delay()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        with self.halted(self.bus()):
            self.assert_it_goes_on(program)


class GreetingTest(MuteServiceTest):
    """What the toolkit greets while its application is made."""

    def setUp(self):
        super().setUp()
        self.mute = MuteSocket(self.folder / "mute")
        self.addCleanup(self.mute.close)

    def check(self, what, **environment):
        self.write_ini()
        with self.without_delay("the start"):
            program = self.start(**environment)
            # Without the bus there is no accessibility: the window manager tells.
            wait_for("the window", lambda: self.desktop.is_active("Velmars Tarvik"))

        self.assertIn(what + " does not answer and is left out", program.written())
        with self.without_delay("the end"):
            self.assertEqual(program.end(), 0)

    def test_a_mute_session_bus(self):
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS="unix:path=" + self.mute.path)

    def test_a_halted_session_bus(self):
        with self.halted(self.bus()):
            self.check("the session bus")

    def test_a_mute_bus_of_accessibility(self):
        self.check(
            "the bus of accessibility", AT_SPI_BUS_ADDRESS="unix:path=" + self.mute.path
        )

    def test_a_mute_bus_of_accessibility_that_the_display_tells_of(self):
        if self.desktop.wayland:
            raise unittest.SkipTest("this is a note on a display of X")
        told = ["xprop", "-root", "-f", "AT_SPI_BUS", "8s"]
        before = subprocess.run(
            ["xprop", "-root", "-notype", "AT_SPI_BUS"],
            env=self.desktop.environment, capture_output=True, text=True, check=True,
        ).stdout
        again = ["-set", "AT_SPI_BUS", before.split('"')[1]] if '"' in before else [
            "-remove", "AT_SPI_BUS"
        ]
        self.addCleanup(
            subprocess.run, [*told, *again], env=self.desktop.environment, check=True
        )
        subprocess.run(
            [*told, "-set", "AT_SPI_BUS", "unix:path=" + self.mute.path],
            env=self.desktop.environment, check=True,
        )

        self.check("the bus of accessibility")

    def test_a_mute_session_manager(self):
        self.check(
            "the session manager",
            SESSION_MANAGER="unix/%s:%s" % (os.uname().nodename, self.mute.path),
        )

    def test_a_mute_input_method(self):
        # The toolkit looks for it only where it is installed.
        installed = self.folder / "ibus-daemon"
        installed.write_text("#!/bin/sh\n")
        installed.chmod(0o755)
        address = self.folder / "address"
        address.write_text(
            "IBUS_ADDRESS=unix:path=%s\nIBUS_DAEMON_PID=%d\n" % (self.mute.path, os.getpid())
        )
        self.check(
            "the input method",
            QT_IM_MODULE="ibus", IBUS_ADDRESS_FILE=str(address),
            PATH="%s:%s" % (self.folder, os.environ["PATH"]),
        )

    def test_services_that_answer_are_not_left_out(self):
        program = self.start_quietly()

        self.assertNotIn("left out", program.written())


class WaitingTest(MuteServiceTest):
    """The window waits for no service for longer than an eye sees."""

    def setUp(self):
        super().setUp()
        if self.desktop.wayland:
            raise unittest.SkipTest("only a window of X can be asked whether it is alive")

    @contextlib.contextmanager
    def hardly_waiting(self, program):
        loop = EventLoop(
            self.desktop.environment, program.process.pid, self.desktop.display.server.pid,
            self.desktop.window_called("Velmars Tarvik"),
        )
        self.addCleanup(loop.close)
        yield
        self.assertLess(loop.longest_wait(), LONGEST_WAIT)

    def test_for_a_mute_panel(self):
        self.watcher("mute")
        program = self.start_quietly()

        with self.hardly_waiting(program):
            self.change_the_lamp(program)

    def test_for_a_panel_that_comes_and_is_mute(self):
        program = self.start_quietly()

        with self.hardly_waiting(program):
            watcher = self.watcher("mute")
            wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)
            self.change_the_lamp(program)

    def test_for_a_panel_that_is_halted(self):
        watcher = self.watcher("panel")
        program = self.start_quietly()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        with self.hardly_waiting(program):
            watcher.halt()
            self.change_the_lamp(program)

    def test_for_a_halted_session_bus(self):
        watcher = self.watcher("panel")
        program = self.start_quietly()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        with self.hardly_waiting(program), self.halted(self.bus()):
            self.change_the_lamp(program)

    def test_for_a_halted_notification_service(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        self.desktop.forget_notes()  # the first question starts it
        program = self.start_quietly()
        service = owner_of("org.freedesktop.Notifications", self.address)

        with self.hardly_waiting(program), self.halted(service):
            self.connect(program, "Skylark Mobile")
            self.wait_for_a_note(program)

    def test_for_a_mute_holder_of_the_clipboard(self):
        program = self.start_quietly()
        hold_clipboard(self, self.desktop.environment)
        program.press("cmdOptions")
        wait_for("the box", lambda: program.is_showing("txtRefreshInterval"))
        program.click("txtRefreshInterval")

        with self.hardly_waiting(program):
            program.key("ctrl+v", "End", "7")
            program.wait_text("txtRefreshInterval", lambda text: text.endswith("7"))


def hold_clipboard(test, environment, *text):
    """Something holds it until the end of the test: the text, or mutely without one."""
    holder = start(
        [sys.executable, "-B", selection_holder.__file__,
         *text],
        environment, stdout=subprocess.PIPE,
    )
    test.addCleanup(stop, holder)
    test.assertEqual(holder.stdout.readline(), b"ready\n")


class ClipboardTest(MuteServiceTest):
    """A program that holds the clipboard, and a box of the program's to paste it into."""

    def setUp(self):
        super().setUp()
        if self.desktop.wayland:
            raise unittest.SkipTest("this is the clipboard of X")

    def open_box(self, **environment):
        self.program = self.start_quietly(**environment)
        self.program.press("cmdOptions")
        wait_for("the box", lambda: self.program.is_showing("txtRefreshInterval"))
        self.program.click("txtRefreshInterval")
        self.before = self.program.text("txtRefreshInterval")

    def act(self, *words):
        subprocess.run(["xdotool", *words], env=self.desktop.environment, check=True)


class MuteClipboardTest(ClipboardTest):
    """It does not say what is in it."""

    def setUp(self):
        super().setUp()
        self.open_box()
        # Not before: the program may hold the selection itself once its box is clicked on.
        hold_clipboard(self, self.desktop.environment)

    def assert_it_is_dropped(self, *words):
        with self.without_delay("the window"):
            self.act(*words)
            # What comes after it is answered after it.
            self.program.key("End", "7")
            self.program.wait_text("txtRefreshInterval", self.before + "7")

    def test_it_is_not_pasted_with_the_keyboard(self):
        self.assert_it_is_dropped("key", "ctrl+v")

    def test_it_is_not_pasted_with_the_mouse(self):
        self.assert_it_is_dropped("click", "2")

    def test_it_opens_no_menu(self):
        self.assert_it_is_dropped("click", "3")


class FarClipboardTest(ClipboardTest):
    """It answers at once, and everything takes its time on the way."""

    def test_it_is_pasted(self):
        display = FarDisplay(self.desktop.environment)
        self.addCleanup(display.close)
        hold_clipboard(self, {**self.desktop.environment, **display.environment}, "9")
        self.open_box(**display.environment)
        self.act("key", "End")

        display.delay = 0.06
        self.act("key", "ctrl+v")

        self.program.wait_text("txtRefreshInterval", self.before + "9")


if __name__ == "__main__":
    unittest.main()
