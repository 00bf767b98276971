"""Scripts in a session without a virtual keyboard: the desktop's portal types them."""
import contextlib
import unittest

from desktop import Desktop, wait_for
from portal import Portal
from statusnotifier import StatusNotifierHost

SHIFT, CONTROL, ENTER, TAB, LEFT = 0xFFE1, 0xFFE3, 0xFF0D, 0xFF09, 0xFF51
UNICODE = 0x1000000  # added to a character without a keysym of its own


def strokes(*keysyms):
    return [(keysym, pressed) for keysym in keysyms for pressed in (True, False)]


class PortalCase(unittest.TestCase):
    def start(self, script="", **settings):
        self.screen = Desktop(panel=False)
        self.addCleanup(self.screen.close)
        self.screen.environment.update(XDG_SESSION_TYPE="wayland", QUILLBOX_LOG="1")
        self.screen.settings(**settings)
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

    def says(self, words):
        wait_for(words, lambda: words in self.screen.log("quillbox"))


class PortalScripts(PortalCase):
    def pick(self):
        self.tray.pick_entry("Hello")

    def fails_with(self, words):
        self.says(words)
        wait_for("the message", lambda: self.screen.window("Quillbox Script Error"))

    def test_in_order_and_asked_once(self):
        self.start("aB€漢\t~{LEFT 2}+(cd)^e")
        portal = self.portal()  # later than the program
        wanted = (strokes(ord("a"), ord("B"), 0x20AC, UNICODE + ord("漢"), TAB, ENTER, LEFT, LEFT)
                  + [(SHIFT, True)] + strokes(ord("c"), ord("d")) + [(SHIFT, False), (CONTROL, True)]
                  + strokes(ord("e")) + [(CONTROL, False)])
        devices = {"types": 1, "persist_mode": 2}
        asked = [("CreateSession", {}), ("SelectDevices", devices), ("Start", {}), ("Close", {})]
        for time in range(1, 4):
            portal.calls.clear()
            portal.keys.clear()
            self.pick()
            wait_for("the end", lambda: portal.calls[-1:] == [("Close", {})])
            self.assertEqual(wanted, portal.keys)
            self.assertEqual(asked, portal.calls)
            devices["restore_token"] = f"token {time}"
            kept = self.screen.data / "keyboard.token"
            self.assertEqual((f"token {time}", 0o600), (kept.read_text(), kept.stat().st_mode & 0o777))
            if time == 2:
                self.screen.stop_program()
                wait_for("the icon's end", lambda: not self.tray.items)
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

    def test_without_a_portal_windows_of_x11_are_reached(self):
        self.start("aB€")
        typed = self.screen.key_receiver()
        self.pick()
        wait_for("the text", lambda: typed.read_text("utf-8") == "aB€")
        self.says("keys: through XTEST, there being neither virtual keyboard nor portal")

    def test_without_a_portal_it_says_so(self):
        self.start("abc")
        self.pick()
        self.fails_with("This session has no way to type keys into other windows")


class PortalKey(PortalCase):
    def in_front(self):
        window = self.screen.shown()
        return bool(window and self.screen.active() == window.id)

    def settles(self, condition):
        with contextlib.suppress(AssertionError):
            return wait_for("it", condition, 1) or True
        return False

    def test_bound_whenever_a_portal_comes(self):
        self.start(ShowKey="Ctrl+Alt+Shift+Meta+V")
        self.says("key: This desktop gives programs no such keys.")
        for time, plasma in enumerate((None, 5, 6), 1):
            portal = Portal(self.bus, plasma=plasma)
            wait_for("the binding", lambda: self.screen.log("quillbox").count("key: bound") == time)
            # Plasma 5 would only open its settings.
            self.assertEqual(plasma != 5, "BindShortcuts" in dict(portal.calls))
            self.assertEqual([("find_CTRL_ALT_SHIFT_LOGO_v", {"description": "Find an entry in Quillbox",
                                                              "preferred_trigger": "CTRL+ALT+SHIFT+LOGO+v"})],
                             portal.shortcuts)
            portal.press()
            wait_for("the window", self.in_front)
            # A press before the window knows that it is in front brings it up once more.
            wait_for("no window", lambda: portal.press() or self.settles(lambda: not self.in_front()))
            portal.close()
        self.assertIsNone(self.screen.message())

    def test_refused_says_so_in_the_settings_alone(self):
        self.start(ShowKey="F12")
        portal = self.portal(allows=False)
        self.says("key: The desktop has refused this key.")
        self.assertEqual("F12", portal.shortcuts[0][1]["preferred_trigger"])
        wait_for("the session's end", lambda: [name for name, _ in portal.calls][-3:] ==
                 ["CreateSession", "BindShortcuts", "Close"])
        self.assertIsNone(self.screen.message())
