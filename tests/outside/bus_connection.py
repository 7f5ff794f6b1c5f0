"""A connection to a message bus that nobody else shares, so that it can be closed, or fall silent, alone."""

from gi.repository import Gio


def bus_at(address):
    """A connection of its own to the bus of that address."""
    flags = (
        Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    )
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
