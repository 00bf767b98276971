"""A service on the session bus, which answers in its connection's own thread."""
import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

BUS = "org.freedesktop.DBus"


def connect(address):
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)


def call(bus, name, path, method, *arguments):
    """The answer's value, or values; the method is named with its interface, the arguments begin with their types."""
    answer = bus.call_sync(name, path, *method.rsplit(".", 1), GLib.Variant(*arguments) if arguments else None,
                           None, Gio.DBusCallFlags.NONE, 30_000, None).unpack()
    return answer[0] if len(answer) == 1 else answer


def get(bus, name, path, interface, what):
    return call(bus, name, path, f"{BUS}.Properties.Get", "(ss)", (interface, what))


class BusService:
    """On the bus at `address` until `close()`, with the names that it is given. What it takes, calls and signals, goes
    to the method of that name, one message after the other; anything else is answered as an unknown method."""

    TAKES = {}  # interface and name -> types of the values
    PROPERTIES = {}  # interface and name -> value

    def __init__(self, address, *names):
        self.bus = connect(address)
        self.bus.add_filter(self._take)
        for name in names:
            self.ask_bus("RequestName", "(su)", name, 4)

    def _take(self, _bus, message, is_incoming):
        name = f"{message.get_interface()}.{message.get_member()}"
        takes = {f"{BUS}.Properties.Get": "ss", **self.TAKES}
        if not is_incoming or takes.get(name) != message.get_signature():
            return message
        values = message.get_body().unpack() if message.get_body() else ()
        getattr(self, message.get_member())(message, *values)
        return None

    def Get(self, message, interface, name):
        self.answer(message, "(v)", self.PROPERTIES[f"{interface}.{name}"])

    def answer(self, message, kind=None, *values):
        reply = message.new_method_reply()
        if kind:
            reply.set_body(GLib.Variant(kind, values))
        self.bus.send_message(reply, Gio.DBusSendMessageFlags.NONE)

    def refuse(self, message, why):
        refusal = message.new_method_error_literal(f"{BUS}.Error.AccessDenied", why)
        self.bus.send_message(refusal, Gio.DBusSendMessageFlags.NONE)

    def ask_bus(self, method, kind, *arguments):
        return call(self.bus, BUS, "/org/freedesktop/DBus", f"{BUS}.{method}", kind, arguments)

    def close(self):
        if not self.bus.is_closed():
            self.bus.close_sync(None)
