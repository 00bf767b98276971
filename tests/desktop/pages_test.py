#!/usr/bin/env python3
"""The pages as a person uses them: by keyboard alone, and with texts pasted into every field."""
import unittest

from case import DesktopCase, INFO, SETTINGS
from clients import Owner, silent
from desktop import wait_for
from screenreader import nodes

DELETE = "Delete selected entries?"


class Keyboard(DesktopCase):
    DESKTOP = {"accessibility": True}

    def shown(self, role):
        return [node.name for node in nodes(self.reader.window("Quillbox")) if node.role == role]

    def test_find(self):
        self.start_reading("Clip")
        self.copy("Größe 42", "fourth", "fifth")
        self.reader.tab_to("Clip-List")
        self.desktop.type("gros")
        wait_for("what is found", lambda: self.shown("list item") == ["Größe 42"])
        self.assertIn(f"1 of {len(self.file('Clip'))}", self.shown("label"))
        self.desktop.key("Return")
        self.pastes("Größe 42")
        self.desktop.key("Escape")
        wait_for("all of the list", lambda: "fifth" in self.shown("list item"))

    def test_pad(self):
        self.start_reading("Pad")
        before = self.file("Pad")
        self.reader.tab_to("Name of the Pad entry")
        self.desktop.type("Greeting\nDear all,\nhello")
        self.reader.tab_to("Add")
        self.desktop.key("Return")  # the focused button, and no default one
        self.file_becomes("Pad", ["Greeting\r\nDear all,\nhello", *before])
        self.reader.tab_to("Pad-List", True)
        self.desktop.key("Home")
        self.reader.tab_to("Insert")
        self.desktop.key("space")
        self.pastes("Dear all,\nhello")
        self.reader.tab_to("Pad-List", True)
        self.desktop.key("ctrl+End")
        self.file_becomes("Pad", [*before, "Greeting\r\nDear all,\nhello"])
        self.desktop.key("Delete")
        self.answer(DELETE)
        self.file_becomes("Pad", before)

    def test_a_dialog_gives_the_focus_back(self):
        self.start_reading("Clip")
        for button, title in (("Settings...", SETTINGS), ("Info...", INFO)):
            self.reader.tab_to(button, True)
            self.desktop.key("space")
            wait_for(f"{title} in front", lambda: self.active() == self.titled(title).id)
            self.desktop.key("Escape")
            wait_for(f"Quillbox in front after {title}", lambda: self.active() == self.window.id)


class Fields(DesktopCase):
    """Each field pastes what the one before has copied: the clipboard is another program's once, then our own."""

    DESKTOP = {"accessibility": True}
    FIELDS = (("Clip", "Current clipboard text"), ("Pad", "Name of the Pad entry"), ("Pad", "Text of the Pad entry"),
              ("Timer", "Message of the timer"), ("ToDo", "Text of the ToDo entry"))

    def test_paste_and_copy_in_every_field(self):
        self.start_reading("Clip")
        self.copy("seed")
        page, text = "Clip", "seed"
        for number, (there, field) in enumerate(self.FIELDS):
            self.to_page(page, there)
            page = there
            self.reader.tab_to(field)
            paste, copy = (("ctrl+v", "ctrl+c"), ("shift+Insert", "ctrl+Insert"))[number % 2]
            self.desktop.key("ctrl+a", paste, "End", str(number), "ctrl+a", copy)
            text += str(number)
            self.pastes(text)
        with Owner(self.desktop.name, {"TARGETS": silent}) as owner:
            wait_for("the question to the owner", lambda: owner.asked)
            # Nothing can be pasted, and nobody waits for that.
            self.desktop.key("ctrl+a", "ctrl+v", "shift+Insert", "End", "z", "ctrl+a", "ctrl+c")
            self.pastes(text + "z")
        self.next_copy_is_taken()

    def to_page(self, page, there):
        order = ("Clip", "Pad", "Calc", "Timer", "ToDo")
        self.desktop.key(*["ctrl+Tab"] * (order.index(there) - order.index(page)))

    def test_a_sum_goes_to_the_clipboard(self):
        self.start_reading("Calc")
        for keys, result in ((("1", "2", "asterisk", "3", "plus", "6", "Return"), "42"),
                             (("KP_9", "KP_Divide", "KP_4", "KP_Subtract", "KP_1", "KP_Enter"), "1.25")):
            self.reader.tab_to("Display")
            self.desktop.key(*keys)
            self.reader.tab_to("copy result to clipboard")
            self.desktop.key("space")
            self.pastes(result)
            self.newest_becomes(result)


if __name__ == "__main__":
    unittest.main()
