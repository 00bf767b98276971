#!/usr/bin/env python3
"""The windows among those of other programs: who is in front, who has the keyboard, who stands where."""
import time
import unittest

from Xlib import X

import accessible
from case import DesktopCase
from desktop import wait_for


class Windows(DesktopCase):
    def stacking(self):
        """Ids of the windows, the highest last."""
        return list(self.desktop.property(self.desktop.root, "_NET_CLIENT_LIST_STACKING") or [])

    def active(self):
        return (list(self.desktop.property(self.desktop.root, "_NET_ACTIVE_WINDOW") or []) or [0])[0]

    def titled(self, title):
        return wait_for(f"the window {title}",
                        lambda: (w := self.desktop.window(title)) and self.desktop.is_viewable(w) and w)


class FirstStart(Windows):
    SETTINGS = None

    def test_start_help_stands_before_the_main_window(self):
        self.desktop.start_program()
        title = "General Starting Information on Quillbox"
        dialog, main = self.titled(title), self.titled("Quillbox")
        time.sleep(0.5)
        order = self.stacking()
        self.assertLess(order.index(main.id), order.index(dialog.id))
        self.desktop.picture("first-start")


class InFront(Windows):
    SETTINGS = {"AlwaysOnTop": "2"}

    def other_program(self):
        """A window of another program that covers everything and has the keyboard."""
        window = self.desktop.root.create_window(0, 0, 1200, 900, 0, X.CopyFromParent, background_pixel=0x445566)
        window.set_wm_name("other")
        window.map()
        self.desktop.display.sync()
        wait_for("the other program", lambda: window.id in self.stacking())
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        return window

    def test_click_on_the_icon_brings_a_covered_window_up(self):
        self.desktop.start_program()
        main = self.desktop.show_window()
        other = self.other_program()
        wait_for("the other program in front", lambda: self.active() == other.id)
        self.desktop.click_icon(1)
        wait_for("the window in front", lambda: self.active() == main.id)
        order = self.stacking()
        self.assertLess(order.index(other.id), order.index(main.id))

    def test_dialog_from_the_menu_has_the_keyboard(self):
        self.desktop.start_program()
        self.other_program()
        self.desktop.open_menu()
        self.desktop.key("s")
        dialog = self.titled("Quillbox Settings")
        wait_for("the dialog in front", lambda: self.active() == dialog.id)
        self.desktop.key("Escape")
        wait_for("the dialog's end", lambda: not self.desktop.window("Quillbox Settings"))


class AlwaysOnTop(Windows):
    def test_the_window_stays_above_and_the_menu_switches_that(self):
        self.desktop.start_program()
        main = self.desktop.show_window()
        above = self.desktop.display.intern_atom("_NET_WM_STATE_ABOVE")

        def is_above():
            return above in list(self.desktop.property(main, "_NET_WM_STATE") or [])

        wait_for("the window above the others", is_above)
        self.desktop.open_menu()
        self.desktop.key("a")
        wait_for("the window among the others", lambda: not is_above())
        self.desktop.open_menu()
        self.desktop.key("a")
        wait_for("the window above the others again", is_above)


class Places(Windows):
    DESKTOP = {"accessibility": True}

    def button(self, name):
        """The middle of a button of the main window."""
        nodes = wait_for(f"the button {name}", lambda: [
            node for node in accessible.walk(accessible.tree(self.desktop))
            if node["name"] == name and node["showing"] and node["role"] in ("push button", "button")], 30)
        x, y, width, height = nodes[0]["place"]
        return x + width // 2, y + height // 2

    def place(self):
        window = self.titled("Quillbox")
        time.sleep(0.3)
        return self.desktop.place(window)[:2]

    def shown(self):
        window = self.desktop.window("Quillbox")
        return bool(window and self.desktop.is_viewable(window))

    def move(self, x, y):
        self.desktop.xdotool("windowmove", "--sync", self.titled("Quillbox").id, x, y)
        time.sleep(0.3)

    def test_only_the_button_keeps_the_place(self):
        self.desktop.start_program()
        self.desktop.show_window()
        x, _, width, _ = self.desktop.place(self.titled("Quillbox"))
        self.assertLess(abs(x + width / 2 - 640), 30, "centred at first")
        self.move(100, 120)
        kept = self.place()
        self.desktop.click(*self.button("Minimize Quillbox"))
        wait_for("the window in the tray", lambda: not self.shown())
        self.desktop.show_window()
        self.assertEqual(kept, self.place())
        # The close box keeps nothing.
        self.move(300, 50)
        self.assertNotEqual(kept, self.place())
        self.desktop.close_box(self.titled("Quillbox"))
        wait_for("the window in the tray", lambda: not self.shown())
        self.desktop.show_window()
        self.assertEqual(kept, self.place())


if __name__ == "__main__":
    unittest.main()
