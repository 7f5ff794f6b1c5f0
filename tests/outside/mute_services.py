"""What the tests with services that fall silent share."""

import contextlib
import itertools
import os
import signal
import socket
import subprocess
import sys
import threading
import time

from gi.repository import GLib

import selection_holder
from bus_connection import bus_at
from faulty_bus import OddBus, Way
from faulty_service import FaultyService
from processes import start, stop
from session_manager import SessionManager
from support import ProgramTest

LONGEST_WAIT = 0.2  # seconds that the window may wait for anybody but its user
PORTAL = "org.freedesktop.portal.Desktop"
LONGEST = 5.0  # seconds for what takes a fraction of one, and takes 25 where it waits


def has_owner(name, address):
    bus = bus_at(address)
    answer = bus.call_sync(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", GLib.Variant("(s)", (name,)), None, 0, 5000, None,
    )
    bus.close_sync(None)
    return answer.unpack()[0]


def owner_of(name, address):
    """The number of the process that has the name on the bus of that address."""
    bus = bus_at(address)
    answer = bus.call_sync(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)), None, 0, 5000, None,
    )
    bus.close_sync(None)
    return answer.unpack()[0]


def ibus_at(address, folder):
    """An environment in which an input method runs on a bus of that address."""
    # The toolkit looks for it only where it is installed.
    installed = folder / "ibus-daemon"
    installed.write_text("#!/bin/sh\n", encoding="ascii")
    installed.chmod(0o755)
    told = folder / "address"
    told.write_text(
        "IBUS_ADDRESS=%s\nIBUS_DAEMON_PID=%d\n" % (address, os.getpid()), encoding="ascii"
    )
    return {
        "QT_IM_MODULE": "ibus", "IBUS_ADDRESS_FILE": str(told),
        "PATH": "%s:%s" % (folder, os.environ["PATH"]),
    }


def path_of(address):
    """Of the socket that a D-Bus address names."""
    return address.partition("path=")[2].partition(",")[0]


def session_manager_at(path):
    """The address of one that listens there."""
    return "unix/%s:%s" % (os.uname().nodename, path)


class MuteSocket:
    """Takes every connection, says one thing or nothing, and never a word more, until close()."""

    def __init__(self, path, word=b""):
        self.path = str(path)
        self.word = word
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
                self.taken[-1].send(self.word)

    def close(self):
        with contextlib.suppress(OSError):
            self.listening.shutdown(socket.SHUT_RDWR)
        self.listening.close()
        self.thread.join()
        for connection in self.taken:
            connection.close()


def hold_clipboard(test, environment, *text):
    """Something holds it until the end of the test: the text, or mutely without one."""
    holder = start(
        [sys.executable, "-B", selection_holder.__file__,
         *text],
        environment, stdout=subprocess.PIPE,
    )
    test.addCleanup(stop, holder)
    test.assertEqual(holder.stdout.readline(), b"ready\n")
    return holder


class MuteServiceTest(ProgramTest):
    numbers = itertools.count()

    @property
    def address(self):
        return self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"]

    @contextlib.contextmanager
    def without_delay(self, what):
        begin = time.monotonic()
        yield
        self.assertLess(time.monotonic() - begin, LONGEST, what)

    def watcher(self, kind):
        return self.faulty(kind, self.address)

    def faulty(self, kind, address, *name):
        service = FaultyService(address, kind, *name)
        self.addCleanup(service.close)
        return service

    def way(self, path, delay=0.0):
        """To a socket, until the end of the test."""
        way = Way(self.folder / ("way-%d" % next(self.numbers)), path, delay)
        self.addCleanup(way.close)
        return way

    def way_to_bus(self, address, delay=0.0):
        return self.way(path_of(address), delay)

    def odd_bus(self, greets):
        """The address of a bus that talks nonsense, once it has greeted if it does."""
        bus = OddBus(greets)
        self.addCleanup(bus.close)
        return bus.address

    def session_manager(self):
        manager = SessionManager(self.desktop.environment)
        self.addCleanup(manager.close)
        return manager

    def accessibility_address(self):
        """Of the bus of accessibility, which is started where it does not run."""
        bus = bus_at(self.address)
        answer = bus.call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, 5000, None
        )
        bus.close_sync(None)
        return answer.unpack()[0]

    def bus_with_accessibility(self, address):
        """The address of a session bus that tells of that bus of accessibility."""
        own = self.another_bus()
        self.faulty(address, own, "org.a11y.Bus")
        return own

    def another_bus(self):
        """The address of a session bus on which nothing runs, until the end of the test."""
        daemon = start(
            ["dbus-daemon", "--session", "--print-address", "--nofork"],
            self.desktop.environment, stdout=subprocess.PIPE,
        )
        self.addCleanup(stop, daemon)
        return daemon.stdout.readline().decode().strip()

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
