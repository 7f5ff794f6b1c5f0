"""Daemons that do not do what they should: ways to a service that can become slow or carry nonsense while
programs talk over them, and message buses that answer nonsense from the start."""

import contextlib
import os
import socket
import tempfile
import threading
import time

from gi.repository import Gio, GLib

DAEMON = "org.freedesktop.DBus"
GARBAGE = b"\x00HTTP/1.1 400 No\r\n\r\n" * 8


class Way:
    """The way to the socket `target`, to be found at `path` until close(). What comes back takes
    `delay` seconds, and is nothing but garbage while `is_garbled`."""

    def __init__(self, path, target, delay=0.0):
        self.path = str(path)
        self.target = target
        self.delay = delay
        self.is_garbled = False
        self.sockets = []
        self.listening = socket.socket(socket.AF_UNIX)
        self.listening.bind(self.path)
        self.listening.listen()
        threading.Thread(target=self._take, daemon=True).start()

    @property
    def address(self):
        """Of a bus."""
        return "unix:path=" + self.path

    def _take(self):
        with contextlib.suppress(OSError):
            while True:
                here = self.listening.accept()[0]
                there = socket.socket(socket.AF_UNIX)
                there.connect(self.target)
                self.sockets += [here, there]
                for ends in ((here, there, False), (there, here, True)):
                    threading.Thread(target=self._pass, args=ends, daemon=True).start()

    def _pass(self, source, target, is_answer):
        # Files go along: who asks for a delay of sleep gets one.
        with contextlib.suppress(OSError):
            while True:
                data, files, _, _ = socket.recv_fds(source, 1 << 16, 16)
                if not data:
                    break
                if is_answer:
                    time.sleep(self.delay)
                    data = GARBAGE if self.is_garbled else data
                socket.send_fds(target, [data], files)
                for file in files:
                    os.close(file)
        for end in (source, target):
            with contextlib.suppress(OSError):
                end.shutdown(socket.SHUT_RDWR)

    def close(self):
        for each in (self.listening, *self.sockets):
            with contextlib.suppress(OSError):
                each.shutdown(socket.SHUT_RDWR)
            each.close()


class OddBus:
    """A message bus that takes every connection, until close(). It answers everything with numbers;
    one that `greets` gives a name first, as it should."""

    def __init__(self, greets):
        self.greets = greets
        self.connections = []
        self.calls = []
        self.loop = GLib.MainLoop(GLib.MainContext())
        ready = threading.Event()
        self.thread = threading.Thread(target=self._run, args=(ready,), daemon=True)
        self.thread.start()
        if not ready.wait(10):
            raise AssertionError("the bus did not start")

    def _run(self, ready):
        context = self.loop.get_context()
        context.push_thread_default()
        server = Gio.DBusServer.new_sync(
            "unix:tmpdir=%s" % tempfile.gettempdir(), Gio.DBusServerFlags.NONE, Gio.dbus_generate_guid(), None, None
        )
        server.connect("new-connection", self._take)
        server.start()
        self.address = server.get_client_address()
        ready.set()
        self.loop.run()
        server.stop()
        for connection in self.connections:
            connection.close(None, None)
        context.pop_thread_default()

    def _take(self, _server, connection):
        connection.set_exit_on_close(False)
        connection.add_filter(self._answer)
        self.connections.append(connection)
        return True

    def _answer(self, connection, message, incoming):
        if not incoming:
            return message
        if message.get_message_type() == Gio.DBusMessageType.METHOD_CALL:
            method = message.get_member()
            self.calls.append(method)
            reply = Gio.DBusMessage.new_method_reply(message)
            reply.set_sender(DAEMON)
            if method == "Hello" and self.greets:
                reply.set_body(GLib.Variant("(s)", (":1.%d" % len(self.connections),)))
            else:
                reply.set_body(GLib.Variant("(ai)", ([1, 2],)))
            with contextlib.suppress(GLib.Error):  # who asked may have gone
                connection.send_message(reply, Gio.DBusSendMessageFlags.NONE)
        return None

    def close(self):
        ending = GLib.idle_source_new()
        ending.set_callback(lambda *_: self.loop.quit())
        ending.attach(self.loop.get_context())
        self.thread.join()
