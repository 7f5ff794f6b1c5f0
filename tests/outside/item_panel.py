"""A panel that asks programs for items of the StatusNotifier kind, and works them as a user would."""

import threading

from gi.repository import Gio, GLib

from bus_connection import bus_at
from desktop import wait_for

WATCHER = """
<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
</interface></node>
"""
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"


class ItemPanel:
    """The panel, on the bus of that address until close(); a mute one has its name there, but never
    answers."""

    def __init__(self, address, mute=False):
        self.item = None
        self.mute = mute
        self.closing = threading.Event()
        self.context = GLib.MainContext()
        self.loop = GLib.MainLoop(self.context)
        ready = threading.Event()
        self.thread = threading.Thread(target=self._run, args=(address, ready), daemon=True)
        self.thread.start()
        if not ready.wait(10):
            raise AssertionError("the panel did not come to the bus")

    def _run(self, address, ready):
        self.context.push_thread_default()
        self.bus = bus_at(address)
        interface = Gio.DBusNodeInfo.new_for_xml(WATCHER).interfaces[0]
        self.bus.register_object(
            "/StatusNotifierWatcher", interface, self._on_call, self._on_property, None
        )
        self.bus.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            GLib.Variant("(su)", ("org.kde.StatusNotifierWatcher", 4)), None, 0, -1, None,
        )
        ready.set()
        if self.mute:
            self.closing.wait()
        else:
            self.loop.run()
        self.bus.close_sync(None)
        self.context.pop_thread_default()

    def _on_call(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            name = arguments[0]
            self.item = sender if name.startswith("/") else name
        invocation.return_value(None)

    @staticmethod
    def _on_property(_bus, _sender, _path, _interface, name):
        return {
            "RegisteredStatusNotifierItems": GLib.Variant("as", []),
            "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
            "ProtocolVersion": GLib.Variant("i", 0),
        }[name]

    def _call(self, path, interface, method, arguments):
        name = wait_for("the item", lambda: self.item)
        return self.bus.call_sync(
            name, path, interface, method, arguments, None, 0, 5000, None
        ).unpack()

    def property(self, name):
        return self._call(
            "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
            GLib.Variant("(ss)", (ITEM, name)),
        )[0]

    def click(self):
        """The left button."""
        self._call("/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (0, 0)))

    def entries(self):
        """The menu's entries as number and properties, in their order."""
        _, (_, _, children) = self._call(
            self.property("Menu"), MENU, "GetLayout", GLib.Variant("(iias)", (0, -1, []))
        )
        return [(child[0], child[1]) for child in children]

    def labels(self):
        return [properties.get("label", "").replace("_", "") for _, properties in self.entries()]

    def choose(self, label):
        number = self.entries()[self.labels().index(label)][0]
        self._call(
            self.property("Menu"), MENU, "Event",
            GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)),
        )

    def close(self):
        self.closing.set()
        # The loop may not have begun yet: what is asked of it waits until it has.
        ending = GLib.idle_source_new()
        ending.set_callback(lambda *_: self.loop.quit())
        ending.attach(self.context)
        self.thread.join()
