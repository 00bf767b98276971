#!/usr/bin/env python3
"""Trays that are missing, late, or go away and come back: the program stays in reach, with one icon at most."""
import re
import threading
import time
import unittest

from case import DesktopCase
from desktop import wait_for
from statusnotifier import StatusNotifierHost

GRACE = 1.0  # seconds in which a window may take the place of a lost tray


def drawn(label):
    """A label of an exported menu as its host draws it: an underscore is a mark, a doubled one is shown."""
    return re.sub("_(.)", r"\1", label)


class Watch:
    """Looks all the time how the program can be reached and how many icons it has."""

    def __init__(self, desktop, statusnotifier=lambda: 0):
        self.desktop, self.statusnotifier = desktop, statusnotifier
        self.longest, self.most = 0.0, 0
        self.last = time.monotonic()

    def look(self):
        now = time.monotonic()
        icons = len(self.desktop.icons()) + self.statusnotifier()
        self.most = max(self.most, icons)
        if icons or self.desktop.reach():
            self.last = now
        else:
            self.longest = max(self.longest, now - self.last)

    def until(self, what, condition, seconds=15):
        def looked():
            self.look()
            return condition()

        return wait_for(what, looked, seconds)

    def during(self, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.look()
            time.sleep(0.02)


class WithoutTray(DesktopCase):
    DESKTOP = {"panel": False}

    def reached_by(self):
        return self.desktop.reach()

    def check(self, watch):
        self.assertLessEqual(watch.longest, GRACE, "seconds out of reach")
        self.assertLessEqual(watch.most, 1, "icons at once")

    def close_window(self):
        self.desktop.close_box(self.desktop.window("Quillbox"))

    def test_start_shows_the_window_and_closing_minimises_it(self):
        self.desktop.start_program()
        self.assertEqual("window", self.reached_by())
        self.close_window()
        wait_for("the window in the task bar", lambda: self.reached_by() == "taskbar")
        window = self.desktop.window("Quillbox")
        skip = self.desktop.display.intern_atom("_NET_WM_STATE_SKIP_TASKBAR")
        self.assertNotIn(skip, list(self.desktop.property(window, "_NET_WM_STATE") or []))
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        wait_for("the window again", lambda: self.reached_by() == "window")
        self.next_copy_is_taken()

    def test_tray_that_comes_later_and_goes_and_comes_back(self):
        self.desktop.start_program()
        watch = Watch(self.desktop)
        self.close_window()
        watch.until("the task bar", lambda: self.reached_by() == "taskbar")
        for _ in range(2):
            self.desktop.start_panel()
            watch.until("the icon", self.desktop.icons)
            watch.until("the task bar's end",
                        lambda: (w := self.desktop.window("Quillbox")) is None or w.id not in self.desktop.client_list())
            watch.during(0.5)
            self.desktop.stop_panel()
            watch.until("the task bar again", lambda: self.reached_by() in ("taskbar", "window"))
            watch.during(0.5)
        self.desktop.start_panel()
        watch.until("the icon", self.desktop.icons)
        self.check(watch)
        self.desktop.click_icon(1)
        wait_for("the window", lambda: (w := self.desktop.window("Quillbox")) and self.desktop.is_viewable(w))
        self.desktop.picture("tray-came-back")

    def test_exit_from_a_minimised_window_leaves_nothing(self):
        self.desktop.start_program()
        self.close_window()
        wait_for("the task bar", lambda: self.reached_by() == "taskbar")
        self.assertEqual(0, self.desktop.stop_program())
        wait_for("the window's end", lambda: not self.desktop.windows())


class WithoutBus(DesktopCase):
    DESKTOP = {"bus": False}

    def test_the_icon_is_there_without_a_session_bus(self):
        self.desktop.start_program()
        self.assertEqual(1, len(self.desktop.icons()))
        self.desktop.open_menu()


class StatusNotifier(DesktopCase):
    DESKTOP = {"panel": False}

    def host(self):
        host = StatusNotifierHost(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        closed = threading.Event()

        def close():
            if not closed.is_set():
                closed.set()
                host.close()

        self.addCleanup(close)
        host.end = close
        return host

    def shown(self):
        window = self.desktop.window("Quillbox")
        return bool(window and self.desktop.is_viewable(window))

    def start_with_host(self):
        host = self.host()
        self.desktop.start_program(wait=False)
        host.wait_for_item()
        return host

    def test_activation_shows_the_window(self):
        host = self.start_with_host()
        self.assertFalse(self.shown())
        host.activate()
        wait_for("the window", self.shown)

    def test_exported_menu_shows_the_newest_and_picks(self):
        host = self.start_with_host()
        for text in ("one", "two & a_half", "three"):
            self.desktop.copy(text)
            self.newest_becomes(text)
        menu = host.menu()
        shown = {drawn(properties.get("label", "-")): number for number, properties in menu}
        self.assertEqual(["1:  three", "2:  two & a_half", "3:  one"],
                         [label for label in shown if label[:2] in ("1:", "2:", "3:")][:3])
        self.assertIn("Exit Quillbox", shown)
        host.pick(shown["2:  two & a_half"])
        wait_for("the picked text in another program", lambda: self.desktop.paste() == b"two & a_half")
        self.newest_becomes("two & a_half")

    def test_tip_tells_the_newest_text(self):
        host = self.start_with_host()
        self.desktop.copy("a <b>&amp; c")
        self.newest_becomes("a <b>&amp; c")
        wait_for("the tip", lambda: "(L:12)" in "".join(map(str, host.get("ToolTip"))))

    def test_host_that_goes_away_leaves_the_program_in_reach(self):
        host = self.start_with_host()
        self.assertFalse(self.shown())
        host.end()
        wait_for("the program in reach", self.desktop.reach, GRACE + 4)
        again = self.host()
        again.wait_for_item()
        self.assertEqual(1, len(again.items))
        again.activate()
        wait_for("the window", self.shown)

    def test_two_activations_in_time_are_a_double_click(self):
        self.desktop.settings(ClicksToShow="2")
        host = self.start_with_host()
        host.activate()
        time.sleep(1.5)
        self.assertFalse(self.shown())
        host.activate()
        host.activate()
        wait_for("the window", self.shown)

    def test_both_kinds_of_tray_show_one_icon(self):
        host = self.host()
        self.desktop.start_panel()
        self.desktop.start_program(wait=False)
        host.wait_for_item()
        time.sleep(1)
        self.assertEqual(1, len(host.items) + len(self.desktop.icons()))

    def test_host_that_comes_after_the_other_tray(self):
        self.desktop.start_panel()
        self.desktop.start_program()
        host = self.host()
        watch = Watch(self.desktop, lambda: len(host.items))
        watch.during(2)
        self.assertLessEqual(watch.most, 1, "icons at once")
        self.assertLessEqual(watch.longest, GRACE)


if __name__ == "__main__":
    unittest.main()
