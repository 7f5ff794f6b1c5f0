"""How long a program on a display of X does not look at its events. Run as a program, with the numbers
of that program's process, of the display's and of the window, it asks the window again and again
whether it is alive, until its input ends, and then writes the longest time in which the program only
waited, in seconds. What it worked, and what a busy machine kept from any of the three, does not count."""

import ctypes
import os
import pathlib
import select
import subprocess
import sys
import time

from processes import start, stop
from selection_holder import Display, Id, X

CLIENT_MESSAGE = 33
MAP_NOTIFY = 19
STRUCTURE = 1 << 17 | 1 << 19  # changes of a window and of those in it: answers come as one of these
BETWEEN = 0.01  # seconds from an answer to the next question
LONGEST = 30.0  # seconds, for one that answers no more

X.XSelectInput.argtypes = [Display, Id, ctypes.c_long]
X.XPending.argtypes = [Display]
X.XCloseDisplay.argtypes = [Display]
X.XConnectionNumber.argtypes = [Display]


class Message(ctypes.Structure):
    """A message of a client; padded to the size of any event."""

    _fields_ = [
        ("type", ctypes.c_int), ("serial", Id), ("send_event", ctypes.c_int),
        ("display", Display), ("window", Id), ("message_type", Id), ("format", ctypes.c_int),
        ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24),
    ]


class EventLoop:
    """Watches the window until `longest_wait` is asked for."""

    def __init__(self, environment, process, display, window):
        numbers = [str(number) for number in (process, display, window)]
        self.process = start(
            [sys.executable, "-B", str(pathlib.Path(__file__)), *numbers],
            environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
        )
        if self.process.stdout.readline() != b"ready\n":
            self.close()
            raise AssertionError("the window does not answer")

    def longest_wait(self):
        self.process.stdin.close()
        answer = self.process.stdout.readline()
        return float(answer)

    def close(self):
        self.process.stdin.close()
        stop(self.process)


def scheduled(process):
    """Seconds that the first thread of the process has run, and that it was ready and had to wait."""
    path = "/proc/%d/task/%d/schedstat" % (process, process)
    words = pathlib.Path(path).read_text(encoding="ascii").split()
    return int(words[0]) / 1e9, int(words[1]) / 1e9


def is_busy():
    """More wants to run than there are processors, or waits for the disk: the program gives its
    services more time then."""
    numbers = dict(
        line.split(maxsplit=1)
        for line in pathlib.Path("/proc/stat").read_text(encoding="ascii").splitlines()
    )
    return (
        int(numbers["procs_running"]) > (os.cpu_count() or 1) or int(numbers["procs_blocked"]) > 0
    )


class WindowWatch:
    """Waits for the next window that comes on the display; to be made before its program."""

    def __init__(self):
        self.display = X.XOpenDisplay(None)
        X.XSelectInput(self.display, X.XDefaultRootWindow(self.display), STRUCTURE)
        X.XSync(self.display, 0)
        self.begin = time.monotonic()

    def wait_of(self, process):
        """Seconds that the program of that process only waited, from its start until its window
        came, and those of them in which the machine was busy. What it worked does not count."""
        busy = 0.0
        last = self.begin
        while not self._window_came() and last < self.begin + LONGEST:
            time.sleep(BETWEEN)
            now = time.monotonic()
            busy += now - last if is_busy() else 0.0
            last = now
        return time.monotonic() - self.begin - sum(scheduled(process)), busy

    def _window_came(self):
        while X.XPending(self.display):
            message = Message()
            X.XNextEvent(self.display, ctypes.byref(message))
            if message.type == MAP_NOTIFY:
                return True
        return False

    def close(self):
        X.XCloseDisplay(self.display)


class Pinger:
    def __init__(self, process, server, window):
        self.process = process
        self.others = (server, os.getpid())
        self.window = window
        self.display = X.XOpenDisplay(None)
        self.root = X.XDefaultRootWindow(self.display)
        self.protocols = X.XInternAtom(self.display, b"WM_PROTOCOLS", 0)
        self.ping = X.XInternAtom(self.display, b"_NET_WM_PING", 0)
        self.count = 0
        X.XSelectInput(self.display, self.root, STRUCTURE)

    def excused(self):
        """Seconds that are none of the program's waiting, so far."""
        return sum(scheduled(self.process)) + sum(scheduled(other)[1] for other in self.others)

    def wait(self):
        """Seconds that the program waited before it answered."""
        self.count += 1
        message = Message(
            type=CLIENT_MESSAGE, window=self.window, message_type=self.protocols, format=32
        )
        message.data[:3] = [self.ping, self.count, self.window]
        excused = self.excused()
        begin = time.monotonic()
        X.XSendEvent(self.display, self.window, 0, 0, ctypes.byref(message))
        X.XSync(self.display, 0)
        self._answered(begin + LONGEST)
        return time.monotonic() - begin - (self.excused() - excused)

    def _answered(self, end):
        while time.monotonic() < end:
            while X.XPending(self.display):
                message = Message()
                X.XNextEvent(self.display, ctypes.byref(message))
                if message.type == CLIENT_MESSAGE and list(message.data[:2]) == [
                    self.ping, self.count,
                ]:
                    return
            select.select([X.XConnectionNumber(self.display)], [], [], 0.5)


def first_waits(process, server, window):
    """The longest time in which the program only waited in its first half second with a window."""
    pinger = Pinger(process, server, window)
    longest = 0.0
    end = time.monotonic() + 0.5
    while time.monotonic() < end:
        longest = max(longest, pinger.wait())
        time.sleep(BETWEEN)
    return longest


def watch(process, server, window):
    pinger = Pinger(process, server, window)
    longest = 0.0
    pinger.wait()
    print("ready", flush=True)
    while not select.select([sys.stdin], [], [], BETWEEN)[0]:
        longest = max(longest, pinger.wait())
    print("%.3f" % longest, flush=True)


if __name__ == "__main__":
    watch(*map(int, sys.argv[1:]))
