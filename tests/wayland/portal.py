"""A desktop's portal that hands out keyboards (org.freedesktop.portal.RemoteDesktop) and notes what is typed, and that
binds keys for the whole desktop (org.freedesktop.portal.GlobalShortcuts)."""
from busservice import BusService, GLib

PORTAL = "org.freedesktop.portal"
PATH = "/org/freedesktop/portal/desktop"
GRANTED, REFUSED, FAILED = range(3)  # responses


class Portal(BusService):
    """What a person says is in `allows`."""

    TAKES = {f"{PORTAL}.{name}": values for name, values in {
        "RemoteDesktop.CreateSession": "a{sv}", "RemoteDesktop.SelectDevices": "oa{sv}",
        "RemoteDesktop.Start": "osa{sv}", "RemoteDesktop.NotifyKeyboardKeysym": "oa{sv}iu",
        "GlobalShortcuts.CreateSession": "a{sv}", "GlobalShortcuts.BindShortcuts": "oa(sa{sv})sa{sv}",
        "Session.Close": ""}.items()} | {"org.freedesktop.host.portal.Registry.Register": "sa{sv}"}
    PROPERTIES = {f"{PORTAL}.RemoteDesktop.AvailableDeviceTypes": GLib.Variant("u", 3)}

    def __init__(self, address, allows=True, closes_after=None, like=None):
        self.allows = allows
        self.like = like  # a desktop that binds keys in a way of its own
        self.closes_after = closes_after  # so many keys, as when the person ends the session
        self.calls = []  # what was asked, in order, without the keys
        self.keys = []  # (keysym, pressed)
        self.tokens = 0
        self.session = None
        super().__init__(address, f"{PORTAL}.Desktop")

    def press(self):
        """The person presses the key that was bound."""
        self._signal(PATH, "GlobalShortcuts", "Activated", "(osta{sv})", self.session, self.shortcuts[0][0], 1, {})

    def _signal(self, path, interface, name, kind, *values):
        self.bus.emit_signal(self.sender, path, f"{PORTAL}.{interface}", name, GLib.Variant(kind, values))

    def _note(self, message, options):
        asked = {key: value for key, value in options.items() if not key.endswith("handle_token")}
        self.calls.append((message.get_member(), asked))

    def _respond(self, message, options, code=GRANTED, **results):
        """Tells where the response will be, and gives it there."""
        self._note(message, options)
        request = f"{PATH}/request/{self._part(message)}/{options['handle_token']}"
        self.answer(message, "(o)", request)
        self._signal(request, "Request", "Response", "(ua{sv})", code, results if code != REFUSED else {})

    def _part(self, message):
        """Of a path, which stands for who has asked."""
        self.sender = message.get_sender()
        return self.sender[1:].replace(".", "_")

    # --- calls

    def Register(self, message, name, _options):
        self.calls.append(("Register", name))
        self.answer(message)

    def Get(self, message, *names):
        self.calls.append(("Get", {}))
        super().Get(message, *names)

    def CreateSession(self, message, options):
        self.session = f"{PATH}/session/{self._part(message)}/{options['session_handle_token']}"
        self.shortcuts = options.get("shortcuts", [])
        taken = self._taken() if self.like == "Plasma 5" else {}
        self._respond(message, options, session_handle=GLib.Variant("s", self.session), **taken)

    def SelectDevices(self, message, _session, options):
        self._respond(message, options)

    def Start(self, message, _session, _window, options):
        self.tokens += self.allows
        self._respond(message, options, GRANTED if self.allows else REFUSED, devices=GLib.Variant("u", 1),
                      restore_token=GLib.Variant("s", f"token {self.tokens}"))

    def BindShortcuts(self, message, _session, shortcuts, _window, options):
        self.shortcuts = shortcuts
        code = REFUSED if not self.allows else FAILED if self.like == "GNOME 48" else GRANTED
        self._respond(message, options, code, **({} if self.like == "Plasma 6" else self._taken()))

    def _taken(self):
        return {"shortcuts": GLib.Variant("a(sa{sv})", [
            (name, {"trigger_description": GLib.Variant("s", "the key")}) for name, _ in self.shortcuts])}

    def NotifyKeyboardKeysym(self, message, session, _options, keysym, pressed):
        if session != self.session:
            self.refuse(message, "no such session")
            return
        self.keys.append((keysym, bool(pressed)))
        self.answer(message)
        if len(self.keys) == self.closes_after:
            self._signal(self.session, "Session", "Closed", "(a{sv})", {})
            self.session = None

    def Close(self, message):
        if message.get_path() != self.session:
            self.refuse(message, "no such session")
            return
        self._note(message, {})
        self.session = None
        self.answer(message)
