"""Scripts under sway: typed into the native window that had the focus, with XWayland and without."""
import signal
import sys
import time
import unittest

from Xlib import Xutil
from Xlib.display import Display

import datafiles
from portal import Portal
from sway import Sway, wait_for
from x11.receiver import KEYS, PATIENCE, Receiver, mixed_text, quoted

# Notes each byte that the terminal sends.
RECORDER = """
import os, sys, tty
tty.setraw(0)
with open(sys.argv[1], "ab", buffering=0) as file:
    while True:
        file.write(os.read(0, 65536))
"""


# More different characters than the keys that X11 knows have room for, and one beyond 16 bits.
MANY = "😀" + "".join(map(chr, range(0x4E00, 0x4E00 + 1000)))


class Scripts(unittest.TestCase):
    """A script in the Pad-List, a tray to pick it from, and a terminal to type into."""

    def start(self, script, xwayland=True, environment=(), **settings):
        self.screen = Sway(xwayland=xwayland)
        self.addCleanup(self.screen.close)
        self.screen.settings(**settings)
        self.screen.script(script)
        self.screen.program_environment = {**self.screen.program_environment, **dict(environment)}
        self.screen.start_program()
        self.typed = self.screen.folder / "typed"

    def open_terminal(self):
        self.typed.touch()
        self.screen.terminal(sys.executable, "-c", RECORDER, self.typed)
        time.sleep(1)  # for the program in it

    def pick(self):
        self.screen.tray.pick_entry("Hello")

    def text(self):
        return self.typed.read_bytes().decode(errors="replace")

    def test_arrives_whole(self):
        text = mixed_text(20) + MANY + "\t\n" + MANY
        self.start(quoted(text))
        self.open_terminal()
        self.pick()
        wanted = text.replace("\n", "\r")
        wait_for("the whole text", lambda: len(self.text()) >= len(wanted), PATIENCE)
        self.assertEqual(wanted, self.text())

    def test_arrives_in_a_window_of_xwayland(self):
        strings, names, _ = zip(*KEYS)
        text = mixed_text(1).replace("\n", "") + MANY[:500] + "Ü"
        self.start("".join(strings) + quoted(text[:-1]) + "+ü")  # Shift on a higher level of an extra key
        self.screen.display = Display(self.screen.environment["DISPLAY"])
        receiver = Receiver(self.screen)
        # Sway shows what has been drawn, and gives the focus to who wants it.
        receiver.window.set_wm_hints(flags=Xutil.InputHint, input=True)
        receiver.window.change_attributes(background_pixel=0)
        receiver.window.clear_area()
        self.screen.display.sync()
        wait_for("the window in front", self.screen.focused)
        self.pick()
        wait_for("the last character", lambda: receiver.text().endswith(text[-1]), PATIENCE)
        self.assertEqual(text, receiver.text()[-len(text):])
        # These have each a key of their own.
        wanted = " ".join(names).replace("ISO_Left_Tab", "Tab").replace("C-Break", "Break")
        self.assertEqual(wanted, wait_for("the last release", receiver.presses)[0][:len(wanted)])

    def test_killed_in_the_middle_nothing_stays_pressed(self):
        self.start("+^%({é 32767})")
        self.open_terminal()
        # A keyboard from before, as a person's is. Of one that comes later sway 1.10 tells foot the modifiers while it
        # has no map of its keys, and foot 1.21 passes over them.
        self.screen.start("sh", "-c", "(until [ -e $HOME/go ]; do sleep 0.1; done; printf x) | wtype -")
        self.pick()
        wait_for("the first keys", self.text)
        self.screen.stop_program(signal.SIGKILL)
        time.sleep(0.5)
        before = self.text()
        (self.screen.folder / "go").touch()
        wait_for("a key", lambda: self.text() != before)
        self.assertEqual(before + "x", self.text())

    def test_without_a_window_it_says_so(self):
        self.start("abc")
        self.pick()
        wait_for("the reason", lambda: "keys: No window of another program" in self.screen.log("quillbox"))

    def test_a_native_window_comes_to_the_front_by_the_trays_token_and_gives_the_focus_back(self):
        self.start("a½漢", xwayland=False, environment={"WAYLAND_DEBUG": "1"})
        # Waybar makes its menu as large as it is before it opens.
        wait_for("the captions", lambda: "Settings..." in self.screen.tray.menu(opens=False))
        self.open_terminal()
        self.screen.tray.activate()
        self.screen.in_front("Quillbox")
        self.screen.sway("[app_id=foot] focus")
        time.sleep(1)  # two clicks, no double click
        self.screen.tray.provide_token("token of the tray")
        self.screen.tray.activate()
        wait_for("the token's use", lambda: '.activate("token of the tray"' in self.screen.log("quillbox"))
        self.pick()
        wait_for("the text", lambda: self.text() == "a½漢")

    def test_one_of_a_hundred_is_found_by_the_portals_key_and_pasted_without_the_mouse(self):
        self.start("", xwayland=False, ShowKey="Ctrl+Alt+V", PastePick="1", ClipEntriesMax="99")
        self.screen.stop_program()
        wait_for("the icon's end", lambda: not self.screen.tray.items)
        entries = [f"{number} bottles" for number in range(99)] + ["an old Needle"]
        datafiles.write(self.screen.data / "ClipData.qbx", entries)
        portal = Portal(self.screen.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.addCleanup(portal.close)
        self.screen.start_program()
        wait_for("the key", lambda: "key: bound" in self.screen.log("quillbox"))
        self.open_terminal()
        portal.press()
        self.screen.in_front("Quillbox")
        self.assertEqual(0, self.screen.start("wtype", "need", "-k", "Return").wait(60))
        wait_for("the text in the terminal", lambda: self.text() == "an old Needle")
        self.screen.in_front("foot")
        portal.press()
        self.screen.in_front("Quillbox")
        # A press before the window knows that it is in front brings it up once more.
        wait_for("foot in front", lambda: portal.press() or time.sleep(1) or "foot" in self.screen.focused(), 60)
