"""A panel that speaks StatusNotifierItem: watcher and host in one, which draws nothing."""
import re

from busservice import BUS, BusService, GLib, call, get

WATCHER, PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
ITEM, MENU = "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"
DESCRIPTION = f"""<node><interface name="{WATCHER}">
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>"""


class StatusNotifierHost(BusService):
    """With `names` the watcher has these as well, and is no host by itself."""

    TAKES = {f"{WATCHER}.RegisterStatusNotifierItem": "s", f"{BUS}.Introspectable.Introspect": ""}
    PROPERTIES = {f"{WATCHER}.IsStatusNotifierHostRegistered": GLib.Variant("b", True)}

    def __init__(self, address, *names):
        self.registered = []  # the bus names of all icons that ever came
        super().__init__(address, WATCHER, *names)
        self._signal("StatusNotifierHostRegistered", None)

    @property
    def items(self):
        """The bus names of the icons that are there, in the order of their coming."""
        return [name for name in self.registered if self.ask_bus("NameHasOwner", "(s)", name)]

    def host(self, there):
        """A host of its own comes or goes, of which Plasma's watcher tells nobody."""
        name = "org.kde.StatusNotifierHost-1"
        self.ask_bus("RequestName", "(su)", name, 4) if there else self.ask_bus("ReleaseName", "(s)", name)

    def Introspect(self, message):
        self.answer(message, "(s)", DESCRIPTION)

    def RegisterStatusNotifierItem(self, message, service):
        self.registered.append(message.get_sender() if service.startswith("/") else service)
        self._signal("StatusNotifierItemRegistered", GLib.Variant("(s)", (self.registered[-1],)))
        self.answer(message)

    def _signal(self, name, arguments):
        self.bus.emit_signal(None, PATH, WATCHER, name, arguments)

    # --- what a person does to the newest icon

    def _call(self, method, *arguments, path="/StatusNotifierItem"):
        return call(self.bus, self.registered[-1], path, method, *arguments)

    def get(self, name):
        return get(self.bus, self.registered[-1], "/StatusNotifierItem", ITEM, name)

    def activate(self):
        self._call(f"{ITEM}.Activate", "(ii)", (100, 100))

    def provide_token(self, token):
        """What a tray of Wayland's does before it activates."""
        self._call(f"{ITEM}.ProvideXdgActivationToken", "(s)", (token,))

    def context_menu(self):
        self._call(f"{ITEM}.ContextMenu", "(ii)", (100, 100))

    def menu(self, opens=True):
        """The exported menu from the top, submenus' items behind theirs: caption -> id and properties."""
        path = self.get("Menu")
        if opens:
            self._call(f"{MENU}.AboutToShow", "(i)", (0,), path=path)

        def walk(children):
            for number, properties, below in children:
                if properties.get("visible", True):
                    # As hosts draw a label: an underscore is a mark, a doubled one is shown.
                    yield re.sub("_(.)", r"\1", properties.get("label", "-")).lstrip(), (number, properties)
                    yield from walk(below)

        return dict(walk(self._call(f"{MENU}.GetLayout", "(iias)", (0, -1, []), path=path)[1][2]))

    def pick_entry(self, text):
        """The item whose caption ends so."""
        number = next(number for caption, (number, _) in self.menu().items() if caption.endswith(text))
        self._call(f"{MENU}.Event", "(isvu)", (number, "clicked", GLib.Variant("i", 0), 0), path=self.get("Menu"))
