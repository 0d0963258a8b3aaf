"""The session bus, as a desktop's shell uses it: bare calls, with no introspection before them."""

import time

from gi.repository import Gio, GLib


class Bus:
    def __init__(self):
        self.connection = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def call(self, service, path, interface, method, signature=None, *arguments, seconds=25):
        """Returns the reply's values as a tuple; raises GLib.Error for an error reply."""
        parameters = GLib.Variant(signature, arguments) if signature else None
        return self.connection.call_sync(
            service, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, seconds * 1000, None
        ).unpack()

    def send(self, service, path, interface, method, signature=None, *arguments):
        """Does not wait for the reply, as shells do not."""
        parameters = GLib.Variant(signature, arguments) if signature else None
        self.connection.call(
            service, path, interface, method, parameters, None, Gio.DBusCallFlags.NONE, 60000, None, None
        )
        self.connection.flush_sync(None)

    def _ask_bus(self, method, name):
        return self.call(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, "(s)", name
        )[0]

    def has_owner(self, name):
        return self._ask_bus("NameHasOwner", name)

    def process_of(self, name):
        """The process id of the name's owner; 0 without an owner."""
        try:
            return self._ask_bus("GetConnectionUnixProcessID", name)
        except GLib.Error:
            return 0


def pause(seconds):
    """Waits, and handles what arrives on the bus meanwhile."""
    end = time.monotonic() + seconds
    context = GLib.MainContext.default()
    while time.monotonic() < end:
        while context.pending():
            context.iteration(False)
        time.sleep(0.02)


def wait_until(condition, seconds=20):
    """Returns the condition's first true value; its last value if there is none within the time."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value or time.monotonic() > end:
            return value
        pause(0.2)
