#!/usr/bin/env python3
"""Tips of several lines stay on their monitor, wherever the mouse stands."""
import os
import unittest

from Xlib import X

from case import DesktopCase
from desktop import wait_for
from pages_test import Pages
from screenreader import nodes

TITLE = "Quillbox Settings"
SCREEN = (1280, 1024)

# Left, top, width and height; the second one begins lower than the first.
MONITORS = {"first": (0, 0, 640, 1024), "second": (640, 124, 640, 900)}
MARKS = {"left": "", "centred": "<c>", "right": "<R>"}
TEN_LINES = ("Ten lines with &every mark: && and\t a tab\r\n\r\nThe <r>third && fourth\r\nfourth\r\nfifth\r\n"
             "A long sixth one that takes the width of two and is wrapped\r\neighth\r\nninth\r\n&tenth")


def tip(desktop):
    """The place of the tip, None while there is none."""
    for _, attributes, geometry, depth in desktop.windows():
        if (depth == 1 and attributes.override_redirect and attributes.map_state == X.IsViewable
                and geometry[2] < SCREEN[0]):
            return geometry
    return None


def holds(outer, inner):
    return (outer[0] <= inner[0] and inner[0] + inner[2] <= outer[0] + outer[2]
            and outer[1] <= inner[1] and inner[1] + inner[3] <= outer[1] + outer[3])


def contains(place, point):
    return holds(place, (*point, 1, 1))


class TipsOnTwoMonitors(DesktopCase):
    DESKTOP = {"panel": False, "bus": False}
    SETTINGS = None

    def setUp(self):
        super().setUp()
        for (name, (left, top, width, height)), output in zip(MONITORS.items(), ("screen", "none")):
            self.desktop.start("xrandr", "--setmonitor", name, f"{width}/{width // 4}x{height}/{height // 4}+{left}+{top}",
                               output).wait(10)

    def test_ten_lines_at_every_edge(self):
        for mark, text in MARKS.items():
            window = self.desktop.start(os.environ["QUILLBOX_TIP_WINDOW"], "-name", "quillbox", text + TEN_LINES)
            wait_for("the window", self.desktop.windows)
            for monitor, (left, top, width, height) in MONITORS.items():
                middle = (left + width // 2, top + height // 2)
                points = {"left": (left, middle[1]), "right": (left + width - 1, middle[1]),
                          "top": (middle[0], top), "bottom": (middle[0], top + height - 1),
                          "corner": (left + width - 1, top + height - 1)}
                for edge, point in points.items():
                    with self.subTest(mark=mark, monitor=monitor, edge=edge):
                        self.desktop.xdotool("mousemove", *middle, "mousemove", *point)
                        place = wait_for("the tip here", lambda: (t := tip(self.desktop)) and self.near(t, point) and t)
                        self.assertTrue(holds(MONITORS[monitor], place), place)
                        self.assertGreater(place[3], 10 * 12, "ten lines")
                        self.assertLess(place[2], 330)
                        self.assertFalse(contains(place, point), "the tip covers what it is about")
                        self.desktop.picture(f"tip-{mark}-{monitor}-{edge}")
            self.desktop.end(window)

    @staticmethod
    def near(place, point):
        left, top, width, height = place
        return left - 1 <= point[0] <= left + width and min(abs(top - point[1]), abs(top + height - point[1])) < 40


class Tips(Pages):
    def test_settings_at_the_edges(self):
        self.start()
        self.reader.tab_to("Settings...")
        self.desktop.key("space")
        window = wait_for(TITLE, lambda: (w := self.desktop.window(TITLE)) and self.desktop.is_viewable(w) and w)
        edges = {"left": (-120, 300), "right": (SCREEN[0] - 140, 300), "bottom": (300, SCREEN[1] - 170)}
        for edge, (left, top) in edges.items():
            with self.subTest(edge):
                self.desktop.xdotool("mousemove", 640, 10, "windowmove", "--sync", window.id, left, top)
                box = next(node for node, _ in nodes(self.reader.window(TITLE)) if node["role"] == "check box")
                x, y, wide, high = box["place"]
                at = (max(x, 5) if edge == "left" else min(x + wide, SCREEN[0]) - 5, y + high // 2)
                self.desktop.xdotool("mousemove", at[0] + 1, at[1], "sleep", 0.1, "mousemove", *at)
                found = wait_for("the tip", lambda: tip(self.desktop), 5)
                self.desktop.picture(f"tip-{edge}")
                self.assertGreater(found[3], 40, "a tip of several lines")
                self.assertTrue(holds((0, 0, *SCREEN), found), found)
                self.assertFalse(contains(found, at), "the tip covers what it is about")
                self.desktop.xdotool("mousemove", 640, 10)
                wait_for("the tip's end", lambda: not tip(self.desktop), 5)


# The base class's tests are those of another file.
del Pages

if __name__ == "__main__":
    unittest.main()
