"""A panel that speaks StatusNotifierItem: watcher and host in one, which draws nothing."""
import threading

from busservice import BusService, Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
INTERFACE = f"""
<node><interface name="{WATCHER}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
  <signal name="StatusNotifierHostUnregistered"/>
</interface></node>"""


class StatusNotifierHost(BusService):
    """With `names` the watcher has these as well, and is no host by itself."""

    def __init__(self, address, *names):
        self.items = []  # the bus names of the icons, in the order of their coming
        self.known = threading.Condition()
        super().__init__(address, WATCHER, *names)

    def publish(self):
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object("/StatusNotifierWatcher", interface, self._called, self._property, None)
        self.bus.signal_subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", None, None,
                                  Gio.DBusSignalFlags.NONE, self._owner_changed)

    def named(self):
        self._signal("StatusNotifierHostRegistered", None)

    def host(self, there):
        """A host of its own comes or goes, of which Plasma's watcher tells nobody."""
        name = "org.kde.StatusNotifierHost-1"
        self.name("RequestName", "(su)", name, 4) if there else self.name("ReleaseName", "(s)", name)

    def _called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            service = arguments.unpack()[0]
            name = sender if service.startswith("/") else service
            with self.known:
                self.items.append(name)
                self.known.notify_all()
            self._signal("StatusNotifierItemRegistered", GLib.Variant("(s)", (name,)))
        invocation.return_value(None)

    def _property(self, _bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", self.items),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    def _owner_changed(self, _bus, _sender, _path, _interface, _signal, arguments):
        name, _, owner = arguments.unpack()
        if not owner and name in self.items:
            with self.known:
                self.items.remove(name)

    def _signal(self, name, arguments):
        self.bus.emit_signal(None, "/StatusNotifierWatcher", WATCHER, name, arguments)

    def wait_for_item(self, seconds=10):
        with self.known:
            if not self.known.wait_for(lambda: self.items, seconds):
                raise AssertionError("no icon came")
            return self.items[-1]

    # --- what a person does to the first icon

    def call(self, interface, path, method, arguments, answer=None):
        return self.bus.call_sync(self.items[-1], path, interface, method, arguments,
                                  GLib.VariantType(answer) if answer else None, Gio.DBusCallFlags.NONE, 5000, None)

    def get(self, name):
        return self.call("org.freedesktop.DBus.Properties", "/StatusNotifierItem", "Get",
                         GLib.Variant("(ss)", (ITEM, name)), "(v)").unpack()[0]

    def activate(self):
        self.call(ITEM, "/StatusNotifierItem", "Activate", GLib.Variant("(ii)", (100, 100)))

    def provide_token(self, token):
        """What a tray of Wayland's does before it activates."""
        self.call(ITEM, "/StatusNotifierItem", "ProvideXdgActivationToken", GLib.Variant("(s)", (token,)))

    def context_menu(self):
        self.call(ITEM, "/StatusNotifierItem", "ContextMenu", GLib.Variant("(ii)", (100, 100)))

    def menu(self, opens=True):
        """The exported menu from the top: (id, properties) of each visible item, submenus' items behind theirs."""
        path = self.get("Menu")
        if opens:
            self.call(MENU, path, "AboutToShow", GLib.Variant("(i)", (0,)), "(b)")
        layout = self.call(MENU, path, "GetLayout", GLib.Variant("(iias)", (0, -1, [])), "(u(ia{sv}av))").unpack()[1]
        found = []

        def walk(children):
            for number, properties, below in children:
                if properties.get("visible", True):
                    found.append((number, properties))
                    walk(below)

        walk(layout[2])
        return found

    def pick_entry(self, text):
        """Of the item whose caption ends so."""
        self.pick(next(number for number, shown in self.menu() if shown.get("label", "").endswith(text)))

    def pick(self, number):
        self.call(MENU, self.get("Menu"), "Event",
                  GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("i", 0), 0)))
