#!/usr/bin/env python3
"""A sum typed on the keyboard: its result goes to the clipboard, the Clip-List and the tray menu."""
import unittest

from pages_test import Pages


class Calc(Pages):
    def result_is_copied(self, *keys, result):
        self.start("Calc")
        self.reader.tab_to("Display")
        self.desktop.key(*keys)
        self.reader.tab_to("copy result to clipboard")
        self.desktop.key("space")
        self.pastes(result)
        self.newest_becomes(result)
        self.copy("another text")
        self.desktop.open_menu()
        self.desktop.key("2")  # the second newest
        self.pastes(result)

    def test_digits_and_enter(self):
        self.result_is_copied("1", "2", "asterisk", "3", "plus", "6", "Return", result="42")

    def test_numeric_pad(self):
        self.result_is_copied("KP_9", "KP_Divide", "KP_4", "KP_Subtract", "KP_1", "KP_Enter", result="1.25")


# The base class's tests are those of another file.
del Pages

if __name__ == "__main__":
    unittest.main()
