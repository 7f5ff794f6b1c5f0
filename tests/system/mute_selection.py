"""A program that holds the clipboard of its X display and never answers who asks for it, as one that
is halted. Run as a program it holds it until its end."""

import ctypes
import signal

X = ctypes.CDLL("libX11.so.6")
X.XOpenDisplay.restype = ctypes.c_void_p
X.XDefaultRootWindow.restype = ctypes.c_ulong
X.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
X.XCreateSimpleWindow.restype = ctypes.c_ulong
X.XCreateSimpleWindow.argtypes = [
    ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int, ctypes.c_uint, ctypes.c_uint,
    ctypes.c_uint, ctypes.c_ulong, ctypes.c_ulong,
]
X.XInternAtom.restype = ctypes.c_ulong
X.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
X.XSetSelectionOwner.argtypes = [
    ctypes.c_void_p, ctypes.c_ulong, ctypes.c_ulong, ctypes.c_ulong,
]
X.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]


def hold():
    display = X.XOpenDisplay(None)
    window = X.XCreateSimpleWindow(display, X.XDefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0)
    for name in (b"CLIPBOARD", b"PRIMARY"):
        X.XSetSelectionOwner(display, X.XInternAtom(display, name, 0), window, 0)
    X.XSync(display, 0)
    print("ready", flush=True)
    signal.pause()


if __name__ == "__main__":
    hold()
