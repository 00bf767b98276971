#!/usr/bin/env python3
"""Every window in every look: nothing leaves its window, nothing overlaps, everything has a name and a role."""
import subprocess
import time
import unittest

import themes
from case import DesktopCase
from desktop import PICTURES, wait_for
from screenreader import ScreenReader, nodes

BUTTONS = {"push button", "check box", "radio button", "toggle button", "combo box"}
CONTROLS = BUTTONS | {"image", "text", "password text", "list", "label", "scroll bar", "spin button", "page tab", "page tab list"}
UNREACHED = "Message of the timer"  # in the message's window Enter and Escape stay with the buttons
PAGES = ("Clip", "Pad", "Calc", "Timer", "ToDo")
TEXTS = ("Meeting on Tuesday, 10 o'clock", "https://example.org/?a=1&b=2", "Grüße aus Köln")


def inside(place, around):
    return (place[0] >= around[0] and place[1] >= around[1] and place[0] + place[2] <= around[0] + around[2]
            and place[1] + place[3] <= around[1] + around[3])


def overlap(one, other):
    return (one[0] < other[0] + other[2] and other[0] < one[0] + one[2] and one[1] < other[1] + other[3]
            and other[1] < one[1] + one[3])


def faults(window):
    """What is wrong with a window, in words."""
    found = []
    for node, above in nodes(window):
        what = f"{node['role']} {node['name'][:30]!r}"
        if node["role"] in CONTROLS:
            if not inside(node["place"], window["place"]):
                found.append(f"{what} at {node['place']} leaves its window {window['place']}")
            if not node["name"].strip() and "FOCUSABLE" in node["states"]:
                found.append(f"{what} at {node['place']} has no name")
            if node["place"][2] < 4 or node["place"][3] < 4:
                found.append(f"{what} has no room: {node['place']}")
        elif "FOCUSABLE" in node["states"] and node["role"] != "list item" and not any(
                child["role"] == "page tab list" for child in node["children"]):
            found.append(f"{what} takes the focus and has no usual role")
        shown = [child for child in node["children"] if "SHOWING" in child["states"] and child["role"] in BUTTONS]
        found += [f"{what}: {one['name']!r} and {other['name']!r} overlap"
                  for at, one in enumerate(shown) for other in shown[at + 1:] if overlap(one["place"], other["place"])]
    return found


class Look(DesktopCase):
    """The default look; the others below."""

    maxDiff = None
    DESKTOP = {"accessibility": True}
    LOOK = {}
    NAME = "light"

    def setUp(self):
        super().setUp()
        themes.choose(self.desktop, **self.LOOK)
        self.found = {}

    def start(self):
        self.desktop.start_program()
        self.reader = ScreenReader(self.desktop)
        self.addCleanup(self.reader.close)

    def see(self, title, name):
        """Saves the picture of a window and notes what is wrong with it."""
        window = self.in_front(title)
        time.sleep(0.25)  # for the last drawing
        PICTURES.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", str(window.id), str(PICTURES / f"window-{self.NAME}-{name}.png")],
                       env=self.desktop.environment, check=True, stdin=subprocess.DEVNULL)
        tree = wait_for(f"{title} in the tree", lambda: self.reader.window(title))
        controls = [node for node, _ in nodes(tree) if node["role"] in CONTROLS]
        self.assertGreater(len(controls), 1, name)
        if wrong := faults(tree):
            self.found[name] = wrong
        if tree["role"] not in ("frame", "window", "dialog"):
            self.found.setdefault(name, []).append(f"the window is a {tree['role']}")
        self.look_closer(name, tree)
        return window

    def look_closer(self, name, tree):
        """Tab goes to every control; of options to the chosen one, and from the tabs to none of them."""
        if self.NAME != "light":
            return
        reached = {node["name"] for node in self.reader.round() if node}
        for node, _ in nodes(tree):
            if (node["role"] in CONTROLS - {"page tab"} and {"FOCUSABLE", "ENABLED"} <= set(node["states"])
                    and (node["role"] != "radio button" or "CHECKED" in node["states"])
                    and node["name"] != UNREACHED and node["name"] not in reached):
                self.found.setdefault(name, []).append(f"Tab doesn't reach {node['role']} {node['name']!r}")

    def in_front(self, title):
        window = wait_for(title, lambda: (w := self.desktop.window(title)) and self.desktop.is_viewable(w) and w)
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        return window

    def leave(self, window, key="Escape"):
        self.desktop.key(key)
        wait_for("the window's end", lambda: not self.desktop.is_viewable(window))

    def open_from_menu(self, key):
        self.desktop.open_menu()
        self.desktop.key(key)
        wait_for("the menu's end", lambda: not self.desktop.menu())

    def test_windows(self):
        self.start()
        for text in TEXTS:
            self.desktop.copy(text)
            self.newest_becomes(text)
        self.desktop.show_window()
        for page in PAGES:
            self.see("Quillbox", page.lower())
            self.desktop.key("ctrl+Tab")
        self.desktop.key(*["ctrl+Tab"] * PAGES.index("Timer"))
        self.start_countdown()
        self.leave(self.see("Quillbox Timer Message", "message"), "Return")
        self.leave(self.in_front("Quillbox"), "alt+F4")
        self.open_from_menu("s")
        self.settings()
        self.open_from_menu("i")
        self.leave(self.see("Quillbox 4.31 Info", "info"))
        self.open_from_menu("h")
        self.leave(self.see("General Starting Information on Quillbox", "help"))
        self.assertEqual({}, self.found)

    def start_countdown(self):
        """A message of the timer, with its buttons."""
        self.reader.tab_to("Seconds")
        self.desktop.key("ctrl+a", "1")
        self.reader.tab_to("Activate Countdown")
        self.desktop.key("space")
        title = "Quillbox Timer Message"
        wait_for("the message with its buttons", lambda: any(
            node["name"] == "OK" for node, _ in nodes(self.reader.window(title))), 10)

    def settings(self):
        for tab in range(3):
            window = self.see("Quillbox Settings", f"settings-{tab}")
            self.desktop.key("ctrl+Tab")
        self.leave(window)


class DarkHighResolution(Look):
    DESKTOP = {"accessibility": True, "screen": "2560x2048x24"}
    NAME, LOOK = "dark-192dpi", {"dark": True, "scale": 2}


class LargeFont(Look):
    DESKTOP = {"accessibility": True, "screen": "1920x1080x24"}
    NAME, LOOK = "large-font", {"points": 20}


if __name__ == "__main__":
    unittest.main()
