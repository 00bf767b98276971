"""The icon, and trays that are missing, late, or go away and come back: the program stays in reach, with one icon."""
import time

import Xlib.X

import datafiles
from case import HELP, SETTINGS, DesktopCase
from desktop import wait_for

MAXIMIZE = 0x10  # of the functions in _MOTIF_WM_HINTS


class Icon(DesktopCase):
    """Without a session bus there is one kind of tray only."""

    DESKTOP = {"bus": False}
    SETTINGS = {"AlwaysOnTop": "2"}

    def test_presses(self):
        self.desktop.start_program()
        self.assertFalse(self.desktop.shown())
        self.desktop.click_icon()
        for away in (self.desktop.close_box, lambda window: self.desktop.xdotool("windowminimize", window.id)):
            window = self.in_front()
            wait_for("no button in the task bar", lambda: self.state(window, "SKIP_TASKBAR"))
            away(window)
            self.gone()
            self.desktop.click_icon()
        self.in_front()
        self.desktop.key_receiver()
        wait_for("the other program in front", lambda: self.desktop.active() != window.id)
        self.desktop.click_icon()
        self.desktop.close_box(self.in_front())
        self.desktop.open_menu()
        self.desktop.click(100, 100)
        self.menu_goes()
        self.desktop.open_menu()
        self.desktop.open_menu()  # closes it and opens it anew
        self.menu_goes("s")
        self.in_front(SETTINGS)
        self.leave(SETTINGS, "Escape")
        self.desktop.stop_program()
        self.desktop.settings(ClicksToShow="2")
        self.desktop.start_program()
        self.desktop.click_icon()
        self.next_copy_is_taken()
        self.assertFalse(self.desktop.shown())
        self.desktop.click_icon(times=2)
        self.in_front()

    def test_lives_while_a_message_is_open(self):
        file = self.desktop.data / "PadData.qbx"
        datafiles.write(file, ["name\r\ntext"])
        file.write_bytes(file.read_bytes()[:-20])
        self.desktop.start_program(wait=False)
        self.titled("Quillbox Pad-List file damaged")
        self.open_from_menu("Escape")
        self.desktop.show_window()
        self.leave("Quillbox Pad-List file damaged")


class WithoutTray(DesktopCase):
    DESKTOP = {"panel": False}

    def in_task_bar(self):
        wait_for("the task bar", lambda: self.desktop.reach() == "taskbar")
        return self.desktop.window("Quillbox")

    def test_a_tray_that_is_missing_comes_goes_and_comes_back(self):
        """Without one the window comes up at the start, behind the start help; its menu is at a right press."""
        self.desktop.settings(StartHelp="Yes")
        self.desktop.start_program()
        self.next_copy_is_taken()
        self.assertEqual(self.titled(HELP).id, self.desktop.active())
        self.assertEqual(self.titled(HELP).id, self.desktop.stacking()[-1])
        self.leave(HELP, "Escape")
        x, y, width, _ = self.desktop.place(self.in_front())
        self.desktop.click(x + width - 5, y + 5, 3)
        wait_for("the menu", self.desktop.menu_has_keyboard)
        self.menu_goes("Escape")
        for _ in range(2):
            self.desktop.close_box(self.titled())
            window = self.in_task_bar()
            self.assertFalse(self.state(window, "SKIP_TASKBAR"))
            self.to_front(window)
            self.in_front()
        self.next_copy_is_taken()
        self.desktop.close_box(window)
        for last in False, False, True:
            self.in_task_bar()
            self.desktop.start_panel()
            wait_for("one icon", lambda: len(self.desktop.icons()) == 1)
            wait_for("the task bar's end", lambda: (window := self.desktop.window("Quillbox")) is None
                     or window.id not in self.desktop.stacking())
            if not last:
                self.desktop.end(self.desktop.panel)
        self.desktop.show_window()
        self.assertEqual(0, self.desktop.stop_program())
        wait_for("the windows' end", lambda: not [*self.desktop.windows()])


class WithoutWindowManager(DesktopCase):
    """Nobody changes a window's state: what it has, it had when it was mapped."""

    DESKTOP = {"panel": False, "window_manager": False}

    def test_what_a_window_comes_with(self):
        self.start_with_host().activate()
        window = self.titled()
        self.assertTrue(self.state(window, "SKIP_TASKBAR") and self.state(window, "ABOVE"))
        self.assertFalse(self.desktop.property(window, "_MOTIF_WM_HINTS")[1] & MAXIMIZE)


class StatusNotifier(DesktopCase):
    DESKTOP = {"panel": False}

    def test_menu_tip_and_activations(self):
        host = self.start_with_host()
        self.assertFalse(self.desktop.shown())
        self.copy("one", "two & a_half", "three <b>&amp;")
        shown = host.menu()
        self.assertEqual(["1:  three <b>&amp;", "2:  two & a_half", "3:  one"], [*shown][3:6])
        # A script has a picture, a text has none.
        self.assertIn("icon-data", shown["9:  Script: sign off"][1])
        self.assertNotIn("icon-data", shown["7:  Out of office"][1])
        self.assertEqual("checkmark", shown["Always on Top"][1].get("toggle-type"))
        wait_for("the tip", lambda: "(L:14)" in "".join(map(str, host.get("ToolTip"))))
        host.pick_entry("two & a_half")
        self.pastes("two & a_half")
        self.newest_becomes("two & a_half")
        host.context_menu()
        wait_for("the menu", self.desktop.menu_has_keyboard)
        self.desktop.key("Escape")
        host.activate()
        self.desktop.close_box(self.in_front())
        self.desktop.stop_program()
        wait_for("the icon's end", lambda: not host.items)
        self.desktop.settings(ClicksToShow="2")
        self.start_with_host(host).activate()
        self.next_copy_is_taken()
        self.assertFalse(self.desktop.shown())
        time.sleep(1)  # beyond the time of a double click
        host.activate()
        host.activate()
        self.in_front()

    def test_what_a_desktop_waits_for_is_told(self):
        """The one that has handed out a token under Wayland; its X server shows the same messages as any."""
        self.desktop.root.change_attributes(event_mask=Xlib.X.PropertyChangeMask)
        self.desktop.display.sync()
        host = self.start_with_host()
        host.provide_token("a-token-longer-than-one-message")
        host.activate()
        told = b""
        while told.rstrip(b"\0") != b"remove: ID=a-token-longer-than-one-message":
            wait_for(f"what follows {told}", self.desktop.display.pending_events)
            event = self.desktop.display.next_event()
            told += bytes(event.data[1]) if event.type == Xlib.X.ClientMessage else b""

    def test_host_that_goes_away_leaves_the_program_in_reach(self):
        self.start_with_host().close()
        wait_for("the program in reach", self.desktop.reach)
        again = self.host()
        wait_for("the icon", lambda: again.items)
        again.activate()
        self.in_front()
        self.assertEqual(1, len(again.items))

    def test_a_watcher_alone_is_no_tray(self):
        """Plasma's daemon, which is there without a panel and says that it has one."""
        watcher = self.host("org.kde.kded5")
        self.desktop.start_program()
        self.desktop.close_box(self.titled())
        for there, reach in ((None, "taskbar"), (True, ""), (False, "taskbar")):
            if there is not None:
                watcher.host(there)
            wait_for(f"beside the tray: {reach!r}", lambda: self.desktop.reach() == reach)
        self.assertEqual(1, len(watcher.items))

    def test_both_kinds_of_tray_show_one_icon(self):
        self.desktop.start_panel()
        host = self.start_with_host()
        self.next_copy_is_taken()
        self.assertEqual(1, len(host.items) + len(self.desktop.icons()))
