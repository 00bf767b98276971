"""Scripts in a session without a virtual keyboard: the desktop's portal types them."""
import unittest

from desktop import Desktop, wait_for
from portal import Portal
from statusnotifier import StatusNotifierHost

SHIFT, CONTROL, ENTER, TAB, LEFT = 0xFFE1, 0xFFE3, 0xFF0D, 0xFF09, 0xFF51
UNICODE = 0x1000000  # added to a character without a keysym of its own


def strokes(*keysyms):
    return [(keysym, pressed) for keysym in keysyms for pressed in (True, False)]


class PortalScripts(unittest.TestCase):
    def start(self, script):
        self.screen = Desktop(panel=False)
        self.addCleanup(self.screen.close)
        self.screen.environment.update(XDG_SESSION_TYPE="wayland", QUILLBOX_LOG="1")
        self.screen.settings()
        self.screen.script(script)
        self.bus = self.screen.environment["DBUS_SESSION_BUS_ADDRESS"]
        self.tray = StatusNotifierHost(self.bus)
        self.addCleanup(self.tray.close)
        self.screen.start_program(wait=False)
        self.tray.wait_for_item()

    def portal(self, **how):
        portal = Portal(self.bus, **how)
        self.addCleanup(portal.close)
        return portal

    def pick(self):
        self.tray.pick_entry("Hello")

    def fails_with(self, words):
        wait_for(words, lambda: words in self.screen.log("quillbox"))
        wait_for("the message", lambda: self.screen.window("Quillbox Script Error"))

    def test_in_order_and_asked_once(self):
        self.start("aB€漢\t~{LEFT 2}+(cd)^e")
        portal = self.portal()  # later than the program
        wanted = (strokes(ord("a"), ord("B"), 0x20AC, UNICODE + ord("漢"), TAB, ENTER, LEFT, LEFT)
                  + [(SHIFT, True)] + strokes(ord("c"), ord("d")) + [(SHIFT, False), (CONTROL, True)]
                  + strokes(ord("e")) + [(CONTROL, False)])
        asked = [("CreateSession", {}), ("SelectDevices", {"types": 1, "persist_mode": 2}), ("Start", {}), ("Close", {})]
        for time in range(1, 4):
            portal.calls.clear()
            portal.keys.clear()
            self.pick()
            wait_for("the end", lambda: portal.calls[-1:] == [("Close", {})])
            self.assertEqual(wanted, portal.keys)
            self.assertEqual(asked, portal.calls)
            asked[1][1]["restore_token"] = f"token {time}"
            kept = self.screen.data / "keyboard.token"
            self.assertEqual((f"token {time}", 0o600), (kept.read_text(), kept.stat().st_mode & 0o777))
            if time == 2:
                self.screen.stop_program()
                self.screen.start_program(wait=False)
                self.tray.wait_for_item()

    def test_refused(self):
        self.start("abc")
        portal = self.portal(allows=False)
        self.pick()
        self.fails_with("The permission to type keys was refused.")
        self.assertEqual([], portal.keys)

    def test_closed_in_the_middle(self):
        self.start("{a 1000}")
        portal = self.portal(closes_after=200)
        self.pick()
        self.fails_with("The desktop has withdrawn the permission to type keys.")
        self.assertEqual(strokes(*[ord("a")] * 100), portal.keys)

    def test_without_a_portal_it_says_so(self):
        self.start("abc")
        self.pick()
        self.fails_with("This session has no way to type keys into other windows")


if __name__ == "__main__":
    unittest.main()
