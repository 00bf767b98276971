#!/usr/bin/env python3
"""Tips of several lines stay on the screen, wherever their window stands."""
import unittest

from Xlib import X

from desktop import wait_for
from pages_test import Pages
from screenreader import nodes

TITLE = "Quillbox Settings"
SCREEN = (1280, 1024)


class Tips(Pages):
    def tip(self):
        """The place of the tip, None while there is none."""
        for _, attributes, geometry, depth in self.desktop.windows():
            if depth == 1 and attributes.override_redirect and attributes.map_state == X.IsViewable:
                return geometry
        return None

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
                found = wait_for("the tip", self.tip, 5)
                self.desktop.picture(f"tip-{edge}")
                self.assertGreater(found[3], 40, "a tip of several lines")
                self.assertGreaterEqual(min(found[0], found[1]), 0)
                self.assertLessEqual(found[0] + found[2], SCREEN[0])
                self.assertLessEqual(found[1] + found[3], SCREEN[1])
                self.assertFalse(found[0] <= at[0] < found[0] + found[2] and found[1] <= at[1] < found[1] + found[3],
                                 "the tip covers what it is about")
                self.desktop.xdotool("mousemove", 640, 10)
                wait_for("the tip's end", lambda: not self.tip(), 5)


# The base class's tests are those of another file.
del Pages

if __name__ == "__main__":
    unittest.main()
