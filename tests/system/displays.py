"""Displays for programs to run on: one of X, and one of Wayland, whose compositor draws into a display
of X with its software renderer, so that real mouse presses and keys reach it as well."""

import itertools
import os
import signal

from processes import Failure, start, stop, wait_for

_numbers = itertools.count()


class XDisplay:
    """An X server without a window manager; end it with close()."""

    def __init__(self, environment, screen="1000x700x24"):
        read_end, write_end = os.pipe()
        self.server = start(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", screen, "-nolisten", "tcp"],
            environment, pass_fds=[write_end],
        )
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise Failure("the virtual display did not start")
        # What a program needs in its environment to come here.
        self.environment = {"DISPLAY": ":" + number, "QT_QPA_PLATFORM": "xcb"}

    def end(self, number=signal.SIGTERM):
        """Ends the display under the programs that are on it."""
        self.server.send_signal(number)
        self.server.wait()

    def close(self):
        stop(self.server)


class WaylandDisplay:
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

    def end(self, number=signal.SIGTERM):
        """Ends the display under the programs that are on it."""
        self.server.send_signal(number)
        self.server.wait()

    def close(self):
        stop(self.server)
        self.below.close()
