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
    """A window or what is shown in it; `place` is left, top, width and height on the screen."""

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

    def _windows(self):
        programs = [each for each in self._children((f"{PREFIX}.Registry", ROOT)) if self._name(each) == "quillbox"]
        return [window for program in programs for window in self._children(program)]

    def _shown(self, node):
        """The node with all below it that is shown, None if it isn't."""
        states = self._states(node)
        return Node(self._ask(node, "Accessible.GetRoleName"), self._name(node), states,
                    self._ask(node, "Component.GetExtents", "(u)", (0,)),
                    list(filter(None, map(self._shown, self._children(node))))) if "SHOWING" in states else None

    def window(self, title):
        """What is shown of that window now; None if there is none, or while it changes."""
        with contextlib.suppress(GLib.Error):
            return next((self._shown(window) for window in self._windows() if self._name(window) == title), None)

    def _focused(self, node):
        states = self._states(node)
        if "FOCUSED" in states and self._ask(node, "Accessible.GetRoleName") not in PARTS:
            return node
        return next(filter(None, map(self._focused, self._children(node))), None) if "SHOWING" in states else None

    def focused(self):
        """The control that has the keyboard, by what the bus calls it; None if there is none."""
        with contextlib.suppress(GLib.Error):
            return next(filter(None, map(self._focused, self._windows())), None)

    def round(self):
        """The names of all controls that Tab reaches, as it is pressed."""
        seen, focused = [], wait_for("a control with the keyboard", self.focused)
        while focused not in seen:
            seen.append(focused)
            self.desktop.key("Tab")
            wait_for(f"Tab leaves {focused}", lambda: "FOCUSED" not in self._states(focused), pause=0.02)
            focused = wait_for(f"a control behind {focused}", self.focused)
            yield self._name(focused)

    def tab_to(self, name):
        """Presses Tab until the control of that name has the keyboard."""
        if name not in self.round():
            raise AssertionError(f"Tab doesn't reach {name!r}")
