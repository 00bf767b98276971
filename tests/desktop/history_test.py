#!/usr/bin/env python3
"""The main work: copied texts come into the list, onto the disk and back."""
import signal
import time
import unittest

import accessible
import datafiles
from case import DesktopCase
from desktop import wait_for

ROWS = 50
SOON = 0.5  # seconds from a copy to the disk


class CopiedTexts(DesktopCase):
    DESKTOP = {"accessibility": True}

    def copy_and_time(self, texts):
        """Copies the texts one after the other; returns the longest time from a copy to the disk."""
        longest = 0.0
        for text in texts:
            self.desktop.copy(text)
            start = time.monotonic()
            self.newest_becomes(text)
            longest = max(longest, time.monotonic() - start)
        return longest

    def rows(self):
        return wait_for("rows in the list", lambda: accessible.items(self.desktop, "list item"), 30)

    def test_sixty_texts_survive_a_kill(self):
        self.desktop.start_program()
        rounds = iter("abc")

        def round_of_copies():
            name = next(rounds)
            self.texts = [f"{name} text {number} äöü" for number in range(60)]
            return self.copy_and_time(self.texts)

        self.measured("seconds from a copy to the disk", round_of_copies, SOON)
        newest_first = list(reversed(self.texts))[:ROWS]
        self.assertEqual(newest_first, datafiles.entries(self.desktop.data / "ClipData.qbx"))

        self.desktop.stop_program(signal.SIGKILL)
        self.assertEqual(newest_first, datafiles.entries(self.desktop.data / "ClipData.qbx"))
        self.desktop.start_program()
        self.desktop.show_window()
        shown = [name for name in self.rows() if " text " in name]
        self.assertEqual(newest_first[:len(shown)], shown)
        self.assertGreaterEqual(len(shown), 10, "rows that the window shows")
        self.assertEqual(newest_first, datafiles.entries(self.desktop.data / "ClipData.qbx"))

    def test_text_picked_from_the_menu_is_pasted_elsewhere(self):
        self.desktop.start_program()
        texts = ["first & last", "two\nlines", "x" * 100, "4711", "newest"]
        for text in texts:
            self.desktop.copy(text)
            self.newest_becomes(text)
        self.desktop.open_menu()
        self.desktop.picture("menu")
        self.desktop.key("4")
        wait_for("the picked text in another program", lambda: self.desktop.paste() == b"two\nlines")
        self.newest_becomes("two\nlines")
        self.assertEqual(["two\nlines", "newest", "4711"],
                         datafiles.entries(self.desktop.data / "ClipData.qbx")[:3])

    def test_double_click_on_a_row_brings_it_back(self):
        self.desktop.start_program()
        for text in ("alpha", "beta", "gamma"):
            self.desktop.copy(text)
            self.newest_becomes(text)
        self.desktop.show_window()
        tree = wait_for("the list", lambda: [n for n in accessible.walk(accessible.tree(self.desktop))
                                             if n["role"] == "list item" and n["name"] == "alpha"], 30)
        x, y, width, height = tree[0]["place"]
        self.desktop.click(x + 20, y + height // 2, times=2)
        wait_for("the text in another program", lambda: self.desktop.paste() == b"alpha")
        self.newest_becomes("alpha")
        self.assertEqual(["alpha", "gamma", "beta"], datafiles.entries(self.desktop.data / "ClipData.qbx")[:3])


class Icon(DesktopCase):
    def shown(self):
        window = self.desktop.window("Quillbox")
        return bool(window and self.desktop.is_viewable(window))

    def comes_to_the_front(self):
        """The window has the keyboard, and no button in the task bar."""
        wait_for("the window", self.shown)
        window = self.desktop.window("Quillbox")
        skip = self.desktop.display.intern_atom("_NET_WM_STATE_SKIP_TASKBAR")
        wait_for("the keyboard at the window", lambda: self.desktop.display.get_input_focus().focus == window)
        wait_for("no button", lambda: skip in list(self.desktop.property(window, "_NET_WM_STATE") or []))
        return window

    def test_one_press_of_the_left_button_shows_the_window(self):
        self.desktop.start_program()
        self.assertFalse(self.shown())
        self.desktop.click_icon(1)
        self.comes_to_the_front()

    def test_the_right_button_opens_the_menu_and_escape_closes_it(self):
        self.desktop.start_program()
        self.desktop.open_menu()
        self.assertFalse(self.shown())
        self.desktop.key("Escape")
        wait_for("the menu's end", lambda: not self.desktop.menu())

    def test_the_menu_closes_by_a_click_elsewhere(self):
        self.desktop.start_program()
        self.desktop.open_menu()
        self.desktop.click(100, 100)
        wait_for("the menu's end", lambda: not self.desktop.menu())

    def test_close_box_goes_to_the_tray_and_back(self):
        self.desktop.start_program()
        self.desktop.show_window()
        for _ in range(2):
            self.desktop.close_box(self.comes_to_the_front())
            wait_for("the window in the tray", lambda: not self.shown())
            self.assertIsNone(self.desktop.program.poll())
            self.desktop.click_icon(1)
        self.comes_to_the_front()


class IconInTwoClicks(DesktopCase):
    SETTINGS = {"ClicksToShow": "2"}

    def test_only_a_double_click_shows_the_window(self):
        self.desktop.start_program()
        self.desktop.click_icon(1)
        time.sleep(1)
        window = self.desktop.window("Quillbox")
        self.assertFalse(window and self.desktop.is_viewable(window))
        self.desktop.click_icon(1, times=2)
        wait_for("the window", lambda: (w := self.desktop.window("Quillbox")) and self.desktop.is_viewable(w))


if __name__ == "__main__":
    unittest.main()
