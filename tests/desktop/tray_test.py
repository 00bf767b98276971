#!/usr/bin/env python3
"""The icon, and trays that are missing, late, or go away and come back: the program stays in reach, with one icon."""
import re
import time
import unittest

import Xlib.X

import datafiles
from case import DesktopCase, SETTINGS
from desktop import wait_for
from statusnotifier import StatusNotifierHost

MAXIMIZE = 0x10  # of the functions in _MOTIF_WM_HINTS
GRACE = 10.0  # seconds in which a window must have taken the place of a lost tray


def drawn(label):
    """A label of an exported menu as its host draws it: an underscore is a mark, a doubled one is shown."""
    return re.sub("_(.)", r"\1", label)


class Icon(DesktopCase):
    SETTINGS = {"AlwaysOnTop": "2"}

    def in_front(self):
        """The window has the keyboard, and no button in the task bar."""
        window = self.titled("Quillbox")
        wait_for("the keyboard at the window", lambda: self.desktop.display.get_input_focus().focus == window)
        wait_for("no button", lambda: self.state(window, "SKIP_TASKBAR"))
        return window

    def test_left_and_right_press(self):
        self.desktop.start_program()
        self.assertFalse(self.shown())
        self.desktop.click_icon(1)
        for away in (self.desktop.close_box, self.minimise):
            away(self.in_front())
            wait_for("the window in the tray", lambda: not self.shown())
            self.desktop.click_icon(1)
        other = self.desktop.other_window()
        wait_for("the other program in front", lambda: self.active() == other.id)
        self.desktop.click_icon(1)
        wait_for("the covered window in front", lambda: self.active() == self.window_id())
        for close in (lambda: self.desktop.key("Escape"), lambda: self.desktop.click(100, 100)):
            self.desktop.open_menu()
            close()
            wait_for("the menu's end", lambda: not self.desktop.menu())
        self.desktop.open_menu()
        self.desktop.click_icon(3)  # closes the menu and opens it anew
        wait_for("the menu again", self.desktop.menu)
        self.desktop.key("s")
        wait_for("the dialog in front", lambda: self.active() == self.titled(SETTINGS).id)

    def window_id(self):
        return self.desktop.window("Quillbox").id

    def minimise(self, window):
        """The minimise box of the window's frame."""
        self.desktop.xdotool("windowminimize", window.id)

    def test_double_click_where_the_settings_say_so(self):
        self.desktop.settings(ClicksToShow="2")
        self.desktop.start_program()
        self.desktop.click_icon(1)
        self.next_copy_is_taken()
        self.assertFalse(self.shown())
        self.desktop.click_icon(1, times=2)
        self.titled("Quillbox")

    def test_the_icon_lives_while_a_message_is_open(self):
        self.desktop.data.mkdir(mode=0o700, parents=True)
        (self.desktop.data / "PadData.qbx").write_bytes(datafiles.pad_file(("name", "text"))[:-20])
        self.desktop.start_program(wait=False)
        message = wait_for("a message about the damaged file", self.desktop.message)
        self.desktop.open_menu()
        self.desktop.key("Escape")
        wait_for("the menu's end", lambda: not self.desktop.menu())
        self.desktop.click_icon(1)
        self.titled("Quillbox")
        self.answer(message)

    def test_the_tip_is_plain_text(self):
        self.desktop.start_program()
        self.copy("a <b>bold</b> &amp; more")
        x, y, width, height = self.desktop.icons()[0]
        self.desktop.xdotool("mousemove", x + width // 2 - 3, y + height // 2, "mousemove", x + width // 2, y + height // 2)
        wait_for("the tip", self.desktop.tip)
        self.desktop.picture("tip-of-the-icon")


class WithoutTray(DesktopCase):
    DESKTOP = {"panel": False}

    def close_window(self):
        self.desktop.close_box(self.desktop.window("Quillbox"))
        wait_for("the task bar", lambda: self.desktop.reach() == "taskbar")

    def test_start_shows_the_window_and_closing_minimises_it(self):
        self.desktop.start_program()
        self.assertEqual("window", self.desktop.reach())
        self.close_window()
        window = self.desktop.window("Quillbox")
        self.assertFalse(self.state(window, "SKIP_TASKBAR"))
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        wait_for("the window again", lambda: self.desktop.reach() == "window")
        self.next_copy_is_taken()
        self.close_window()
        self.assertEqual(0, self.desktop.stop_program())
        wait_for("the window's end", lambda: not self.desktop.windows())

    def test_the_menu_is_at_the_windows_right_press_and_ends_the_program(self):
        self.desktop.start_program()
        x, y, width, _ = self.desktop.place(self.titled("Quillbox"))
        self.desktop.click(x + width - 5, y + 5, 3)
        wait_for("the menu", self.desktop.menu)
        self.desktop.key("x")
        self.assertEqual(0, self.desktop.program.wait(30))

    def test_tray_that_comes_later_and_goes_and_comes_back(self):
        self.desktop.start_program()
        self.close_window()
        for again in range(3):
            self.desktop.start_panel()
            wait_for("the icon", self.desktop.icons)
            wait_for("the task bar's end", lambda: (w := self.desktop.window("Quillbox")) is None
                     or w.id not in self.desktop.client_list())
            self.assertEqual(1, len(self.desktop.icons()))
            if again < 2:
                self.desktop.stop_panel()
                wait_for("the task bar again", lambda: self.desktop.reach() in ("taskbar", "window"), GRACE)
        self.desktop.click_icon(1)
        self.titled("Quillbox")


class WithoutBus(DesktopCase):
    DESKTOP = {"bus": False}

    def test_the_icon_is_there_without_a_session_bus(self):
        self.desktop.start_program()
        self.assertEqual(1, len(self.desktop.icons()))
        self.desktop.open_menu()


class WithHost(DesktopCase):
    DESKTOP = {"panel": False}

    def host(self, *names):
        host = StatusNotifierHost(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"], *names)
        self.addCleanup(host.close)
        return host

    def start_with_host(self):
        host = self.host()
        self.desktop.start_program(wait=False)
        host.wait_for_item()
        self.assertFalse(self.shown())
        return host


class WithoutWindowManager(WithHost):
    """Nobody changes a window's state: what it has, it had when it was mapped."""

    DESKTOP = {"panel": False, "window_manager": False}
    SETTINGS = {}

    def test_what_a_window_comes_with(self):
        self.start_with_host().activate()
        window = self.titled("Quillbox")
        self.assertTrue(self.state(window, "SKIP_TASKBAR"))
        self.assertTrue(self.state(window, "ABOVE"))
        self.assertFalse(self.desktop.property(window, "_MOTIF_WM_HINTS")[1] & MAXIMIZE)


class StatusNotifier(WithHost):
    def labels(self, host):
        return {drawn(properties.get("label", "-")): (number, properties) for number, properties in host.menu()}

    def test_exported_menu_and_tip(self):
        host = self.start_with_host()
        self.copy("one", "two & a_half", "three <b>&amp;")
        shown = self.labels(host)
        self.assertEqual(["1:  three <b>&amp;", "2:  two & a_half", "3:  one"],
                         [label for label in shown if label[:2] in ("1:", "2:", "3:")][:3])
        self.assertIn("Exit Quillbox", shown)
        # A script has a picture, a text has none.
        pictured = {label.lstrip(): "icon-data" in properties for label, (_, properties) in shown.items()}
        self.assertTrue(pictured["9:  Script: sign off"])
        self.assertFalse(pictured["7:  Out of office"])
        self.assertEqual("checkmark", shown["Always on Top"][1].get("toggle-type"))
        wait_for("the tip", lambda: "(L:14)" in "".join(map(str, host.get("ToolTip"))))
        host.pick(shown["2:  two & a_half"][0])
        self.pastes("two & a_half")
        self.newest_becomes("two & a_half")
        host.context_menu()
        wait_for("the menu", self.desktop.menu)

    def test_activations(self):
        host = self.start_with_host()
        host.activate()
        self.titled("Quillbox")
        self.assertEqual(0, self.desktop.stop_program())
        self.desktop.settings(ClicksToShow="2")
        self.desktop.start_program(wait=False)
        host.wait_for_item()
        host.activate()
        self.next_copy_is_taken()
        self.assertFalse(self.shown())
        time.sleep(1)  # beyond the time of a double click
        host.activate()
        host.activate()
        self.titled("Quillbox")

    def test_what_a_desktop_waits_for_is_told(self):
        """The one that has handed out a token under Wayland; its X server shows the same messages as any."""
        self.desktop.root.change_attributes(event_mask=Xlib.X.PropertyChangeMask)
        host = self.start_with_host()
        host.provide_token("a-token-longer-than-one-message")
        host.activate()
        told = bytearray()

        def whole():
            while self.desktop.display.pending_events():
                event = self.desktop.display.next_event()
                if event.type == Xlib.X.ClientMessage:
                    told.extend(event.data[1])
            return told.rstrip(b"\0") == b"remove: ID=a-token-longer-than-one-message"

        wait_for("the token", whole)

    def test_host_that_goes_away_leaves_the_program_in_reach(self):
        host = self.start_with_host()
        host.close()
        wait_for("the program in reach", self.desktop.reach, GRACE)
        again = self.host()
        again.wait_for_item()
        self.assertEqual(1, len(again.items))
        again.activate()
        self.titled("Quillbox")

    def test_a_watcher_alone_is_no_tray(self):
        """Plasma's daemon, which is there without a panel and says that it has one."""
        watcher = self.host("org.kde.kded5")
        self.desktop.start_program()
        self.desktop.close_box(self.titled("Quillbox"))
        wait_for("the task bar", lambda: self.desktop.reach() == "taskbar")
        for there, reach in ((True, ""), (False, "taskbar")):
            watcher.host(there)
            wait_for(f"beside the tray: {reach!r}", lambda: self.desktop.reach() == reach)
            self.assertEqual(1, len(watcher.items))

    def test_both_kinds_of_tray_show_one_icon(self):
        host = self.host()
        self.desktop.start_panel()
        self.desktop.start_program(wait=False)
        host.wait_for_item()
        self.next_copy_is_taken()
        self.assertEqual(1, len(host.items) + len(self.desktop.icons()))


if __name__ == "__main__":
    unittest.main()
