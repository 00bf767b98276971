"""A panel that speaks StatusNotifierItem: watcher and host in one, which draws nothing."""
from busservice import BUS, BusService, GLib, call, get

WATCHER, PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
ITEM, MENU = "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"
DESCRIPTION = f"""
<node><interface name="{WATCHER}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>"""


class StatusNotifierHost(BusService):
    """With `names` the watcher has these as well, and is no host by itself."""

    TAKES = {f"{WATCHER}.RegisterStatusNotifierItem": "s", f"{BUS}.NameOwnerChanged": "sss",
             f"{BUS}.Introspectable.Introspect": ""}
    PROPERTIES = {f"{WATCHER}.IsStatusNotifierHostRegistered": GLib.Variant("b", True)}

    def __init__(self, address, *names):
        self.items = []  # the bus names of the icons, in the order of their coming
        super().__init__(address, WATCHER, *names)
        self.ask_bus("AddMatch", "(s)", "member='NameOwnerChanged'")
        self._signal("StatusNotifierHostRegistered", None)

    def host(self, there):
        """A host of its own comes or goes, of which Plasma's watcher tells nobody."""
        name = "org.kde.StatusNotifierHost-1"
        self.ask_bus("RequestName", "(su)", name, 4) if there else self.ask_bus("ReleaseName", "(s)", name)

    def Introspect(self, message):
        self.answer(message, "(s)", DESCRIPTION)

    def RegisterStatusNotifierItem(self, message, service):
        self.items.append(message.get_sender() if service.startswith("/") else service)
        self._signal("StatusNotifierItemRegistered", GLib.Variant("(s)", (self.items[-1],)))
        self.answer(message)

    def NameOwnerChanged(self, _message, name, _before, owner):
        if not owner and name in self.items:
            self.items.remove(name)

    def _signal(self, name, arguments):
        self.bus.emit_signal(None, PATH, WATCHER, name, arguments)

    # --- what a person does to the newest icon

    def _call(self, method, *arguments, path="/StatusNotifierItem"):
        return call(self.bus, self.items[-1], path, method, *arguments)

    def get(self, name):
        return get(self.bus, self.items[-1], "/StatusNotifierItem", ITEM, name)

    def activate(self):
        self._call(f"{ITEM}.Activate", "(ii)", (100, 100))

    def provide_token(self, token):
        """What a tray of Wayland's does before it activates."""
        self._call(f"{ITEM}.ProvideXdgActivationToken", "(s)", (token,))

    def context_menu(self):
        self._call(f"{ITEM}.ContextMenu", "(ii)", (100, 100))

    def menu(self, opens=True):
        """The exported menu from the top: (id, properties) of each visible item, submenus' items behind theirs."""
        path = self.get("Menu")
        if opens:
            self._call(f"{MENU}.AboutToShow", "(i)", (0,), path=path)

        def walk(children):
            for number, properties, below in children:
                if properties.get("visible", True):
                    yield number, properties
                    yield from walk(below)

        return [*walk(self._call(f"{MENU}.GetLayout", "(iias)", (0, -1, []), path=path)[1][2])]

    def pick_entry(self, text):
        """Of the item whose caption ends so."""
        self.pick(next(number for number, shown in self.menu() if shown.get("label", "").endswith(text)))

    def pick(self, number):
        event = (number, "clicked", GLib.Variant("i", 0), 0)
        self._call(f"{MENU}.Event", "(isvu)", event, path=self.get("Menu"))
