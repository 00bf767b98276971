"""A service on the session bus, answering in a thread of its own."""
import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

BUS = "org.freedesktop.DBus"


def connect(address):
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
    bus.set_exit_on_close(False)
    return bus


def call(bus, name, path, method, *arguments):
    """The answer's value, or values; the method is named with its interface, the arguments begin with their types."""
    answer = bus.call_sync(name, path, *method.rsplit(".", 1), GLib.Variant(*arguments) if arguments else None,
                           None, Gio.DBusCallFlags.NONE, 30_000, None).unpack()
    return answer[0] if len(answer) == 1 else answer


def get(bus, name, path, interface, what):
    return call(bus, name, path, f"{BUS}.Properties.Get", "(ss)", (interface, what))


class BusService:
    """On the bus at `address` until `close()`, with the names that it is given."""

    def __init__(self, address, *names):
        self.bus = connect(address)
        self.loop = GLib.MainLoop(GLib.MainContext())
        ready = threading.Event()
        self.thread = threading.Thread(target=self._run, args=(names, ready), daemon=True)
        self.thread.start()
        if not ready.wait(10):
            raise AssertionError(f"{names[0]} did not start")

    def _run(self, names, ready):
        self.loop.get_context().push_thread_default()
        self.publish()
        for name in names:
            self.name("RequestName", "(su)", name, 4)
        self.named()
        ready.set()
        self.loop.run()

    def name(self, method, kind, *arguments):
        call(self.bus, BUS, "/org/freedesktop/DBus", f"{BUS}.{method}", kind, arguments)

    def publish(self):
        """Registers the objects, before anybody knows the names."""

    def named(self):
        """The names are there."""

    def close(self):
        if not self.bus.is_closed():
            self.loop.quit()
            self.thread.join(5)
            self.bus.close_sync(None)
