"""A service on the session bus that does not do what it should; a process of its own, so that it can
be halted as well. Run as a program it is that service: NAME KIND, until its end."""

import os
import pathlib
import signal
import subprocess
import sys
import threading

from gi.repository import Gio, GLib

from bus_connection import bus_at
from processes import end_with_parent, stop

SLOWNESS = 8000  # milliseconds until a slow one answers
WATCHER = "org.kde.StatusNotifierWatcher"


class FaultyService:
    """The service of that name until close(). Kinds: "mute" never answers; "slow" answers late;
    "nonsense" answers everything with numbers; "refusing" with errors, except that it never says
    what it can do; "handleless" with a file that it does not send; "panel" is a watcher as it should be,
    until it is halted; "method" likewise an input method, which takes no key; so are the "odd-method",
    which answers nonsense to keys, and the "slow-method", which is late with them. An address makes it
    a service of accessibility whose bus is there."""

    def __init__(self, address, kind, name=WATCHER):
        self.process = subprocess.Popen(
            [sys.executable, "-B", str(pathlib.Path(__file__)), name, kind],
            env={**os.environ, "DBUS_SESSION_BUS_ADDRESS": address},
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
            preexec_fn=end_with_parent,
        )
        self.calls = []
        self.ready = threading.Event()
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()
        if not self.ready.wait(20):
            self.close()  # it may have the name already, and would keep it from the next
            raise AssertionError("the service did not come to the bus")

    def _read(self):
        # It may be called before it has said that it is there.
        for line in self.process.stdout:
            if line == "ready\n":
                self.ready.set()
            else:
                self.calls.append(line.strip())

    def halt(self):
        self.process.send_signal(signal.SIGSTOP)

    def close(self):
        self.process.send_signal(signal.SIGCONT)
        self.process.terminate()
        self.reader.join()
        stop(self.process)


def is_late(method, kind):
    return kind == "slow" or (kind, method) == ("slow-method", "ProcessKeyEvent")


def answer(call, kind):
    """What a service of that kind says; None for nothing."""
    method = call.get_member()
    if kind == "nonsense" or (kind, method) == ("odd-method", "ProcessKeyEvent"):
        reply = Gio.DBusMessage.new_method_reply(call)
        reply.set_body(GLib.Variant("(ai)", ([1, 2],)))
    elif kind in ("slow", "refusing") and method != "Introspect":
        reply = Gio.DBusMessage.new_method_error_literal(
            call, "org.freedesktop.DBus.Error.Failed", "no"
        )
    elif kind == "panel" and method != "Introspect":
        reply = Gio.DBusMessage.new_method_reply(call)
        if method == "Get":
            reply.set_body(GLib.Variant("(v)", (GLib.Variant("b", True),)))
    elif kind.startswith("unix:"):
        reply = Gio.DBusMessage.new_method_reply(call)
        if method == "Get":
            reply.set_body(GLib.Variant("(v)", (GLib.Variant("b", True),)))
        elif method == "GetAddress":
            reply.set_body(GLib.Variant("(s)", (kind,)))
    elif kind == "handleless":
        reply = Gio.DBusMessage.new_method_reply(call)
        reply.set_body(GLib.Variant("(h)", (3,)))
    elif kind.endswith("method"):
        reply = Gio.DBusMessage.new_method_reply(call)
        if method == "CreateInputContext":
            path = "/org/freedesktop/IBus/InputContext_1"
            reply.set_body(GLib.Variant("(o)", (path,)))
        elif method == "ProcessKeyEvent":
            reply.set_body(GLib.Variant("(b)", (False,)))
    else:
        reply = None
    return reply


def serve(name, kind):
    bus = bus_at(os.environ["DBUS_SESSION_BUS_ADDRESS"])

    def on_message(connection, message, incoming):
        if not incoming:
            return message
        # In a thread of the library's; nothing is left to it, as it would answer by itself.
        kind_of_message = message.get_message_type()
        if kind_of_message == Gio.DBusMessageType.SIGNAL:
            if message.get_member() == "NameAcquired" and message.get_arg0() == name:
                print("ready", flush=True)
        elif kind_of_message == Gio.DBusMessageType.METHOD_CALL:
            print(message.get_member(), flush=True)
            reply = answer(message, kind)
            if reply is not None:
                GLib.timeout_add(
                    SLOWNESS if is_late(message.get_member(), kind) else 0,
                    lambda: bool(connection.send_message(reply, Gio.DBusSendMessageFlags.NONE))
                    and False,
                )
        return None

    bus.add_filter(on_message)
    request = Gio.DBusMessage.new_method_call(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"
    )
    request.set_body(GLib.Variant("(su)", (name, 4)))
    request.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
    bus.send_message(request, Gio.DBusSendMessageFlags.NONE)
    GLib.MainLoop().run()


if __name__ == "__main__":
    serve(*sys.argv[1:])
