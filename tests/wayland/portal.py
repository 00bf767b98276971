"""A desktop's portal that hands out keyboards (org.freedesktop.portal.RemoteDesktop) and notes what is typed, and that
binds keys for the whole desktop (org.freedesktop.portal.GlobalShortcuts)."""
from busservice import BusService, Gio, GLib

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
INTERFACES = """
<node>
<interface name="org.freedesktop.portal.RemoteDesktop">
  <method name="CreateSession"><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
  <method name="SelectDevices"><arg type="o" direction="in"/><arg type="a{sv}" direction="in"/>
    <arg type="o" direction="out"/></method>
  <method name="Start"><arg type="o" direction="in"/><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
    <arg type="o" direction="out"/></method>
  <method name="NotifyKeyboardKeysym"><arg type="o" direction="in"/><arg type="a{sv}" direction="in"/>
    <arg type="i" direction="in"/><arg type="u" direction="in"/></method>
  <property name="AvailableDeviceTypes" type="u" access="read"/>
</interface>
<interface name="org.freedesktop.portal.GlobalShortcuts">
  <method name="CreateSession"><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
  <method name="BindShortcuts"><arg type="o" direction="in"/><arg type="a(sa{sv})" direction="in"/>
    <arg type="s" direction="in"/><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
</interface>
<interface name="org.freedesktop.portal.Session"><method name="Close"/></interface>
</node>"""


class Portal(BusService):
    """What a person says is in `allows`."""

    def __init__(self, address, allows=True, closes_after=None, plasma=None):
        self.allows = allows
        self.plasma = plasma  # the version of Plasma, whose keys are taken in ways of its own
        self.closes_after = closes_after  # so many keys, as when the person ends the session
        self.calls = []  # what was asked, in order, without the keys
        self.keys = []  # (keysym, pressed)
        self.pressing = []
        self.tokens = 0
        self.session = None
        self.registered = 0
        super().__init__(address, NAME)

    def publish(self):
        self.remote, shortcuts, self.ended = Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces
        self.bus.register_object(PATH, self.remote, self._called, lambda *_: GLib.Variant("u", 3), None)
        self.bus.register_object(PATH, shortcuts, self._called, None, None)

    def _called(self, _bus, sender, path, _interface, method, arguments, invocation):
        values = arguments.unpack()
        if method == "NotifyKeyboardKeysym":
            # Several threads take the calls of a moment, in any order.
            self.pressing.append((values, invocation))
            later = GLib.idle_source_new()
            later.set_callback(self._keys)
            later.attach(self.loop.get_context())
            return
        options = values[-1] if values else {}
        self.sender = sender
        self.calls.append((method, {key: value for key, value in options.items() if not key.endswith("handle_token")}))
        if method == "BindShortcuts":
            self.shortcuts = values[1]
        if method == "Close":
            self._end_session()
            invocation.return_value(None)
            return
        request = f"{PATH}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
        invocation.return_value(GLib.Variant("(o)", (request,)))
        code, results = getattr(self, method)(sender, options)
        self.bus.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response",
                             GLib.Variant("(ua{sv})", (code, results)))

    def CreateSession(self, sender, options):
        self.session = f"{PATH}/session/{sender[1:].replace('.', '_')}/{options['session_handle_token']}"
        self.registered = self.bus.register_object(self.session, self.ended, self._called, None, None)
        self.shortcuts = options.get("shortcuts", [])
        return 0, {"session_handle": GLib.Variant("s", self.session), **(self._taken() if self.plasma == 5 else {})}

    def SelectDevices(self, _sender, _options):
        return 0, {}

    def Start(self, _sender, _options):
        if not self.allows:
            return 1, {}
        self.tokens += 1
        return 0, {"devices": GLib.Variant("u", 1), "restore_token": GLib.Variant("s", f"token {self.tokens}")}

    def BindShortcuts(self, _sender, _options):
        return (0 if self.allows else 1), {} if self.plasma == 6 else self._taken()

    def _taken(self):
        return {"shortcuts": GLib.Variant("a(sa{sv})", [
            (name, {"trigger_description": GLib.Variant("s", "the key")}) for name, _ in self.shortcuts])}

    def press(self):
        """The person presses the key that was bound."""
        self.bus.emit_signal(self.sender, PATH, "org.freedesktop.portal.GlobalShortcuts", "Activated", GLib.Variant(
            "(osta{sv})", (self.session, self.shortcuts[0][0], 1, {})))

    def _keys(self, _data):
        while self.pressing:
            self._key(*self.pressing.pop())

    def _key(self, values, invocation):
        if values[0] != self.session:
            invocation.return_dbus_error("org.freedesktop.DBus.Error.AccessDenied", "no such session")
            return
        self.keys.append((values[2], bool(values[3])))
        invocation.return_value(None)
        if len(self.keys) == self.closes_after:
            self.bus.emit_signal(None, self.session, "org.freedesktop.portal.Session", "Closed",
                                 GLib.Variant("(a{sv})", ({},)))
            self._end_session()

    def _end_session(self):
        self.bus.unregister_object(self.registered)
        self.session = None
