"""The program's window as a native one, in a session without XWayland."""
import time
import unittest

from keys_test import ScriptCase, wait_for


class NativeWindow(ScriptCase):
    XWAYLAND = False
    ENVIRONMENT = {"WAYLAND_DEBUG": "1"}

    def test_comes_to_the_front_by_the_trays_token_and_gives_the_focus_back(self):
        self.start("a½漢")
        # Waybar makes its menu as large as it is before it opens.
        wait_for("the captions", lambda: "_Settings..." in [of.get("label") for _, of in self.screen.tray.menu(False)])
        self.open_terminal()
        self.screen.tray.activate()
        wait_for("the window in front", lambda: self.screen.focused().get("app_id") == "quillbox")
        self.screen.focus("foot")
        time.sleep(1)  # two clicks, no double click
        self.screen.tray.provide_token("token of the tray")
        self.screen.tray.activate()
        wait_for("the token's use", lambda: '.activate("token of the tray"' in self.screen.log("quillbox"))
        self.pick()
        wait_for("the text", lambda: self.text() == "a½漢")


if __name__ == "__main__":
    unittest.main()
