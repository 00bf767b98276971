"""A screen reader's view of the program: its windows as they tell themselves on the accessibility bus."""
import contextlib
import dataclasses

from busservice import GLib, call, connect, get
from screen import wait_for

PREFIX = "org.a11y.atspi"
ROOT = "/org/a11y/atspi/accessible/root"
STATES = {"CHECKED": 4, "ENABLED": 8, "FOCUSABLE": 11, "FOCUSED": 12, "SHOWING": 25}  # bits
PARTS = {"list item", "page tab", "filler"}  # of, or around, the control that has the keyboard


@dataclasses.dataclass
class Node:
    """A window or what is shown in it; `path` is what the bus calls it, `place` is left, top, width and height on the
    screen."""

    path: tuple
    role: str
    name: str
    states: set
    place: tuple
    children: list


def nodes(node):
    """The node and all below it; nothing of no node."""
    if node:
        yield node
        for child in node.children:
            yield from nodes(child)


class ScreenReader:
    """Has to be there before the program starts."""

    def __init__(self, desktop):
        self.desktop = desktop
        del desktop.environment["NO_AT_BRIDGE"]
        desktop.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        session = connect(desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.bus = connect(call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress"))
        session.close_sync(None)

    def close(self):
        self.bus.close_sync(None)

    def _ask(self, node, method, *arguments):
        return call(self.bus, *node, f"{PREFIX}.{method}", *arguments)

    def _name(self, node):
        return get(self.bus, *node, f"{PREFIX}.Accessible", "Name")

    def _children(self, node):
        return self._ask(node, "Accessible.GetChildren")

    def _states(self, node):
        low, high = self._ask(node, "Accessible.GetState")
        return {name for name, bit in STATES.items() if (low | high << 32) >> bit & 1}

    def _shown(self, path):
        """The node with all below it that is shown; None if it isn't."""
        states = self._states(path)
        return Node(path, self._ask(path, "Accessible.GetRoleName"), self._name(path), states,
                    self._ask(path, "Component.GetExtents", "(u)", (0,)),
                    list(filter(None, map(self._shown, self._children(path))))) if "SHOWING" in states else None

    def windows(self, title=None):
        """What is shown of the program's windows now, or of those with that title; none while they change."""
        with contextlib.suppress(GLib.Error):
            programs = [each for each in self._children((f"{PREFIX}.Registry", ROOT)) if self._name(each) == "quillbox"]
            windows = [window for program in programs for window in self._children(program)
                       if title in (None, self._name(window))]
            return [*filter(None, map(self._shown, windows))]
        return []

    def window(self, title):
        return next(iter(self.windows(title)), None)

    def focused(self):
        """The control that has the keyboard; None if there is none."""
        return next((node for window in self.windows() for node in nodes(window)
                     if "FOCUSED" in node.states and node.role not in PARTS), None)

    def round(self):
        """The names of all controls that Tab reaches, as it is pressed."""
        seen, focused = [], wait_for("a control with the keyboard", self.focused)
        while focused.path not in seen:
            seen.append(focused.path)
            self.desktop.key("Tab")
            wait_for(f"Tab leaves {focused.name}", lambda: "FOCUSED" not in self._states(focused.path), pause=0.02)
            focused = wait_for(f"a control behind {focused.name}", self.focused)
            yield focused.name

    def tab_to(self, name):
        """Presses Tab until the control of that name has the keyboard."""
        if name not in self.round():
            raise AssertionError(f"Tab doesn't reach {name!r}")
