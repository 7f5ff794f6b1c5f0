"""A program that holds the clipboard of its X display. Run as a program it holds it until its end: with
a text as its argument it gives that to who asks, and without one never answers, as one that is halted.
A second word makes it fall silent on the way: "lists" when it has told what there is, "begins" when it
has said that the text will come in pieces."""

import ctypes
import signal
import sys

Id = ctypes.c_ulong
Display = ctypes.c_void_p

X = ctypes.CDLL("libX11.so.6")
X.XOpenDisplay.restype = Display
X.XDefaultRootWindow.restype = Id
X.XDefaultRootWindow.argtypes = [Display]
X.XCreateSimpleWindow.restype = Id
X.XCreateSimpleWindow.argtypes = [
    Display, Id, ctypes.c_int, ctypes.c_int, ctypes.c_uint, ctypes.c_uint, ctypes.c_uint, Id, Id,
]
X.XInternAtom.restype = Id
X.XInternAtom.argtypes = [Display, ctypes.c_char_p, ctypes.c_int]
X.XSetSelectionOwner.argtypes = [Display, Id, Id, Id]
X.XSync.argtypes = [Display, ctypes.c_int]
X.XNextEvent.argtypes = [Display, ctypes.c_void_p]
X.XChangeProperty.argtypes = [
    Display, Id, Id, Id, ctypes.c_int, ctypes.c_int, ctypes.c_char_p, ctypes.c_int,
]
X.XSendEvent.argtypes = [Display, Id, ctypes.c_int, ctypes.c_long, ctypes.c_void_p]

SELECTION_REQUEST = 30
SELECTION_NOTIFY = 31
ATOM = 4  # the type of a list of names


class Request(ctypes.Structure):
    """Somebody asks for what is held; padded to the size of any event."""

    _fields_ = [
        ("type", ctypes.c_int), ("serial", Id), ("send_event", ctypes.c_int),
        ("display", Display), ("owner", Id), ("requestor", Id), ("selection", Id),
        ("target", Id), ("property", Id), ("time", Id), ("room", ctypes.c_long * 24),
    ]


class Answer(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int), ("serial", Id), ("send_event", ctypes.c_int),
        ("display", Display), ("requestor", Id), ("selection", Id), ("target", Id),
        ("property", Id), ("time", Id), ("room", ctypes.c_long * 24),
    ]


def hold():
    display = X.XOpenDisplay(None)
    window = X.XCreateSimpleWindow(display, X.XDefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0)
    for name in (b"CLIPBOARD", b"PRIMARY"):
        X.XSetSelectionOwner(display, X.XInternAtom(display, name, 0), window, 0)
    X.XSync(display, 0)
    print("ready", flush=True)
    return display


def give(display, text, until=None):
    """Answers who asks for a list of what there is, and for the text, as far as told."""
    kind = X.XInternAtom(display, b"UTF8_STRING", 0)
    targets = X.XInternAtom(display, b"TARGETS", 0)
    while True:
        request = Request()
        X.XNextEvent(display, ctypes.byref(request))
        if request.type != SELECTION_REQUEST:
            continue
        place = request.property
        if request.target == targets:
            change = (ATOM, 32, bytes(Id(kind)), 1)
        elif until == "lists":
            continue
        elif request.target == kind and until == "begins":
            change = (X.XInternAtom(display, b"INCR", 0), 32, bytes(Id(len(text))), 1)
        elif request.target == kind:
            change = (kind, 8, text, len(text))
        else:
            place, change = 0, None
        if change:
            of_type, bits, data, count = change
            X.XChangeProperty(
                display, request.requestor, place, of_type, bits, 0, data, count
            )
        answer = Answer(
            type=SELECTION_NOTIFY, requestor=request.requestor, selection=request.selection,
            target=request.target, property=place, time=request.time,
        )
        X.XSendEvent(display, request.requestor, 0, 0, ctypes.byref(answer))
        X.XSync(display, 0)


if __name__ == "__main__":
    if len(sys.argv) > 1:
        give(hold(), sys.argv[1].encode(), *sys.argv[2:])
    else:
        hold()
        signal.pause()
