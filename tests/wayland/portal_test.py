"""Keys in a session without a virtual keyboard: the portal types scripts, and binds the window's key."""
import contextlib
import os

from case import DesktopCase
from desktop import wait_for
from portal import Portal

SHIFT, CONTROL, ENTER, TAB, LEFT = 0xFFE1, 0xFFE3, 0xFF0D, 0xFF09, 0xFF51
# Who we are is the first that a portal hears: some serve only those that have a name with a dot.
NAMED = "Register", os.environ.get("QUILLBOX_APP_ID", "")
UNICODE = 0x1000000  # added to a character without a keysym of its own


def strokes(*keysyms):
    return [(keysym, pressed) for keysym in keysyms for pressed in (True, False)]


class PortalCase(DesktopCase):
    DESKTOP = {"panel": False}

    def start(self, script=""):
        self.desktop.environment.update(XDG_SESSION_TYPE="wayland", QUILLBOX_LOG="1")
        self.desktop.script(script)
        self.tray = self.start_with_host()

    def portal(self, **how):
        portal = Portal(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"], **how)
        self.addCleanup(portal.close)
        return portal

    def says(self, words):
        wait_for(words, lambda: words in self.desktop.log("quillbox"))


class Scripts(PortalCase):
    def pick(self):
        self.tray.pick_entry("Hello")

    def fails_with(self, words):
        self.says(words)
        self.leave("Quillbox Script Error")

    def test_in_order_and_asked_once(self):
        self.start("aB€漢\t~{LEFT 2}+(cd)^e")
        portal = self.portal()  # later than the program
        wanted = (strokes(ord("a"), ord("B"), 0x20AC, UNICODE + ord("漢"), TAB, ENTER, LEFT, LEFT)
                  + [(SHIFT, True)] + strokes(ord("c"), ord("d")) + [(SHIFT, False), (CONTROL, True)]
                  + strokes(ord("e")) + [(CONTROL, False)])
        devices = {"types": 1, "persist_mode": 2}
        asked = [NAMED, ("Get", {}), ("CreateSession", {}), ("SelectDevices", devices), ("Start", {}), ("Close", {})]
        for time in range(1, 4):
            portal.calls.clear()
            portal.keys.clear()
            self.pick()
            wait_for("the end", lambda: portal.calls[-1:] == [("Close", {})])
            self.assertEqual((wanted, asked), (portal.keys, portal.calls))
            devices["restore_token"] = f"token {time}"
            kept = self.desktop.data / "keyboard.token"
            self.assertEqual((f"token {time}", 0o600), (kept.read_text(), kept.stat().st_mode & 0o777))
            if time == 2:
                self.desktop.stop_program()
                wait_for("the icon's end", lambda: not self.tray.items)
                self.start_with_host(self.tray)

    def test_refused_then_closed_in_the_middle(self):
        self.start("{a 1000}")
        for how, words, keys in (
                ({"allows": False}, "The permission to type keys was refused.", 0),
                ({"closes_after": 200}, "The desktop has withdrawn the permission to type keys.", 100)):
            portal = self.portal(**how)
            self.pick()
            self.fails_with(words)
            self.assertEqual(strokes(*[ord("a")] * keys), portal.keys)
            portal.close()

    def test_without_a_portal_windows_of_x11_are_reached_and_others_not(self):
        self.start("aB€")
        self.pick()
        self.fails_with("This session has no way to type keys into other windows")
        typed = self.desktop.key_receiver()
        self.pick()
        wait_for("the text", lambda: typed.read_text("utf-8") == "aB€")
        self.says("keys: through XTEST, there being neither virtual keyboard nor portal")


class ShowKey(PortalCase):
    SETTINGS = {"ShowKey": "Ctrl+Alt+Shift+Meta+V"}

    def has_gone(self):
        with contextlib.suppress(AssertionError):
            return wait_for("it", lambda: not self.desktop.shown(), 1)

    def test_bound_whenever_a_portal_comes(self):
        self.start()
        self.says("key: This desktop gives programs no such keys.")
        for time, like in enumerate((None, "Plasma 5", "Plasma 6", "GNOME 48"), 1):
            portal = self.portal(like=like)
            wait_for("the binding", lambda: self.desktop.log("quillbox").count("key: bound") == time)
            self.assertEqual([NAMED, "CreateSession"], [portal.calls[0], portal.calls[1][0]])
            # Plasma 5 would only open its settings.
            self.assertEqual(like != "Plasma 5", "BindShortcuts" in dict(portal.calls))
            self.assertEqual([("find_CTRL_ALT_SHIFT_LOGO_v", {"description": "Find an entry in Quillbox",
                                                              "preferred_trigger": "CTRL+ALT+SHIFT+LOGO+v"})],
                             portal.shortcuts)
            portal.press()
            self.in_front()
            # A press before the window knows that it is in front brings it up once more.
            wait_for("no window", lambda: portal.press() or self.has_gone(), 60)
            portal.close()
        portal = self.portal(allows=False)
        self.says("key: The desktop has refused this key.")
        wait_for("the session's end", lambda: [name for name, _ in portal.calls] ==
                 ["Register", "CreateSession", "BindShortcuts", "Close"])
