"""A service on the session bus, answering in a thread of its own."""
import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")


def connect(address):
    flags = Gio.DBusConnectionFlags
    bus = Gio.DBusConnection.new_for_address_sync(address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
    bus.set_exit_on_close(False)
    return bus


class BusService:
    """On the bus at `address` until `close()`, with the names that it is given."""

    def __init__(self, address, *names):
        self.bus = connect(address)
        self.context = GLib.MainContext()
        self.loop = GLib.MainLoop(self.context)
        ready = threading.Event()
        self.thread = threading.Thread(target=self._run, args=(names, ready), daemon=True)
        self.thread.start()
        if not ready.wait(10):
            raise AssertionError(f"{names[0]} did not start")

    def _run(self, names, ready):
        self.context.push_thread_default()
        self.publish()
        for name in names:
            self.name("RequestName", "(su)", name, 4)
        self.named()
        ready.set()
        self.loop.run()

    def name(self, method, kind, *arguments):
        self.bus.call_sync(*BUS, method, GLib.Variant(kind, arguments), None, Gio.DBusCallFlags.NONE, 5000, None)

    def publish(self):
        """Registers the objects, before anybody knows the names."""

    def named(self):
        """The names are there."""

    def close(self):
        if self.bus.is_closed():
            return
        self.context.invoke_full(GLib.PRIORITY_DEFAULT, lambda *_: self.loop.quit())
        self.thread.join(5)
        self.bus.close_sync(None)
