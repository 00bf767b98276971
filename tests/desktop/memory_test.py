#!/usr/bin/env python3
"""Windows that come and go leave no memory behind."""
import pathlib
import re
import time
import unittest

from case import DesktopCase
from desktop import wait_for

WINDOWS = {"i": "Quillbox 4.31 Info", "h": "General Starting Information on Quillbox", "s": "Quillbox Settings"}
ROUNDS = 5
LIMIT = 400  # KiB; a window's drawings alone are more than 60


class Memory(DesktopCase):
    def memory(self):
        """KiB that no file backs, at rest."""
        time.sleep(1)
        status = pathlib.Path(f"/proc/{self.desktop.program.pid}/status").read_text()
        return int(re.search(r"RssAnon:\s*(\d+)", status)[1])

    def round(self):
        for key, title in WINDOWS.items():
            self.desktop.open_menu()
            self.desktop.key(key)
            wait_for(title, lambda: (w := self.desktop.window(title)) and self.desktop.is_viewable(w))
            self.desktop.xdotool("windowactivate", "--sync", self.desktop.window(title).id)
            self.desktop.key("Escape")
            wait_for("its end", lambda: not self.desktop.window(title))

    def test_dialogs_leave_none_behind(self):
        self.desktop.start_program()
        self.round()
        before = self.memory()
        for _ in range(ROUNDS):
            self.round()
        self.assertLess(self.memory() - before, LIMIT)


if __name__ == "__main__":
    unittest.main()
