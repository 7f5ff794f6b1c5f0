"""Displays for programs to run on: one of X, and one of Wayland, whose compositor draws into a display
of X with its software renderer, so that real mouse presses and keys reach it as well."""

import contextlib
import fcntl
import itertools
import os
import signal
import socket
import threading
import time

from processes import Failure, start, stop, wait_for

_numbers = itertools.count()


class _Display:
    """What is shown on by a process of its own, the `server`."""

    def end(self, number=signal.SIGTERM):
        """Ends the display under the programs that are on it."""
        self.server.send_signal(number)
        self.server.wait()

    def close(self):
        stop(self.server)


@contextlib.contextmanager
def alone_among_starting_displays():
    """Two servers that find the number of one that was killed may both take it: then nobody reaches
    the first of them."""
    folder = os.open("/tmp", os.O_RDONLY | os.O_DIRECTORY)
    try:
        fcntl.flock(folder, fcntl.LOCK_EX)
        yield
    finally:
        os.close(folder)


class XDisplay(_Display):
    """An X server without a window manager; end it with close()."""

    def __init__(self, environment, screen="1000x700x24"):
        with alone_among_starting_displays():
            self.server, number = self._started(environment, screen)
        if not number:
            raise Failure("the virtual display did not start")
        # What a program needs in its environment to come here.
        self.environment = {"DISPLAY": ":" + number, "QT_QPA_PLATFORM": "xcb"}

    @staticmethod
    def _started(environment, screen):
        """The server and its number; it goes on where the last program leaves it."""
        read_end, write_end = os.pipe()
        server = start(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", screen, "-nolisten", "tcp",
             "-noreset"],
            environment, pass_fds=[write_end],
        )
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            return server, answer.readline().strip()


class FarDisplay:
    """The way to an X display from afar: what goes through it takes `delay` seconds in each
    direction; end it with close()."""

    def __init__(self, environment):
        self.near = "/tmp/.X11-unix/X" + environment["DISPLAY"].lstrip(":").split(".")[0]
        self.delay = 0.0
        self.sockets = []
        self.listening, number = self._listen()
        # Nothing is shared with a display that is on another machine.
        self.environment = {"DISPLAY": "127.0.0.1:%d" % number, "QT_XCB_NO_MITSHM": "1"}
        threading.Thread(target=self._take, daemon=True).start()

    @staticmethod
    def _listen():
        first_port = 6000
        for number in range(100, 1000):
            listening = socket.socket()
            try:
                listening.bind(("127.0.0.1", first_port + number))
            except OSError:
                listening.close()
                continue
            listening.listen()
            return listening, number
        raise Failure("no way to the display is free")

    def _take(self):
        with contextlib.suppress(OSError):
            while True:
                far = self.listening.accept()[0]
                far.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                near = socket.socket(socket.AF_UNIX)
                near.connect(self.near)
                self.sockets += [far, near]
                for source, target in ((far, near), (near, far)):
                    threading.Thread(target=self._pass, args=(source, target), daemon=True).start()

    def _pass(self, source, target):
        # What comes together goes on together: bytes that wait do not add up their delays.
        with contextlib.suppress(OSError):
            while data := source.recv(1 << 20):
                time.sleep(self.delay)
                target.sendall(data)
        for end in (source, target):
            with contextlib.suppress(OSError):
                end.shutdown(socket.SHUT_RDWR)

    def close(self):
        for each in (self.listening, *self.sockets):
            with contextlib.suppress(OSError):
                each.shutdown(socket.SHUT_RDWR)
            each.close()


class WaylandDisplay(_Display):
    """A compositor that gives each main window the whole screen, so that places on the screen are
    places in the window; end it with close()."""

    def __init__(self, environment, screen="1000x700x24"):
        self.below = XDisplay(environment, screen)
        width, height, _ = screen.split("x")
        socket = "wayland-%d-%d" % (os.getpid(), next(_numbers))
        self.server = start(
            ["weston", "--backend=x11-backend.so", "--use-pixman", "--shell=kiosk-shell.so",
             "--no-config", "--idle-time=0", "--socket=" + socket, "--width=" + width,
             "--height=" + height],
            {**environment, **self.below.environment},
        )
        path = os.path.join(environment["XDG_RUNTIME_DIR"], socket)
        self.environment = {
            **self.below.environment, "WAYLAND_DISPLAY": path, "QT_QPA_PLATFORM": "wayland",
        }
        try:
            wait_for("the compositor", lambda: os.path.exists(path))
        except Failure:
            self.close()
            raise

    def close(self):
        super().close()
        self.below.close()
