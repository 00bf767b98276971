#!/usr/bin/env python3
"""The list pages as a person uses them: by mouse, by keyboard alone, and by drag and drop with another program."""
import pathlib
import unittest

import datafiles
from case import DesktopCase
from desktop import wait_for
from dragging import DragSource, DropTarget
from screenreader import ScreenReader, nodes

TEMPLATES = pathlib.Path(__file__).parents[2] / "templates"
PNG = b"\x89PNG\r\n\x1a\n" + bytes(40)


class Pages(DesktopCase):
    DESKTOP = {"accessibility": True}

    def start(self, page="Clip"):
        self.desktop.start_program()
        self.reader = ScreenReader(self.desktop)
        self.addCleanup(self.reader.close)
        self.window = self.desktop.show_window()
        self.desktop.xdotool("windowactivate", "--sync", self.window.id)
        for _ in range(("Clip", "Pad", "Calc", "Timer", "ToDo").index(page)):
            self.desktop.key("ctrl+Tab")

    def copy(self, *texts):
        for text in texts:
            self.desktop.copy(text)
            self.newest_becomes(text)

    def file(self, name):
        """The entries of a list; those that every user begins with while nothing has been saved."""
        name = f"{name}Data.qbx"
        saved = self.desktop.data / name
        return datafiles.entries(saved if saved.exists() else TEMPLATES / name)

    def file_becomes(self, name, wanted):
        try:
            wait_for(name, lambda: self.file(name) == wanted, 5)
        except AssertionError:
            self.assertEqual(wanted, self.file(name))

    def pastes(self, text):
        wait_for(f"{text!r} in another program", lambda: self.desktop.paste() == text.encode(), 5)

    def node(self, role, name):
        return next(node for node, _ in nodes(self.reader.window("Quillbox")) if (node["role"], node["name"]) == (role, name))

    def middle(self, role, name):
        x, y, width, height = self.node(role, name)["place"]
        return x + min(width // 2, 60), y + height // 2

    def type(self, text):
        self.desktop.xdotool("type", "--delay", 5, text)

    def question_is_answered(self, title, key="Return"):
        box = wait_for(title, lambda: (w := self.desktop.window(title)) and self.desktop.is_viewable(w) and w, 5)
        self.desktop.xdotool("windowactivate", "--sync", box.id, "key", key)
        wait_for("the question's end", lambda: not self.desktop.is_viewable(box))


class Mouse(Pages):
    def test_double_click_puts_an_entry_on_the_clipboard(self):
        self.start()
        self.copy("first", "second", "third")
        before = self.file("Clip")
        self.desktop.click(*self.middle("list item", "first"), times=2)
        self.pastes("first")
        self.file_becomes("Clip", ["first", "third", "second", *before[3:]])

    def test_double_click_exchanges_where_the_settings_say_so(self):
        self.desktop.settings(Insert="1")
        self.start()
        self.copy("first", "second", "third")
        before = self.file("Clip")
        self.desktop.click(*self.middle("list item", "first"), times=2)
        self.pastes("first")
        self.file_becomes("Clip", ["first", "second", "third", *before[3:]])


class Keyboard(Pages):
    def test_clip(self):
        self.start()
        self.copy("first", "second", "third")
        before = self.file("Clip")
        self.reader.tab_to("Clip-List")
        self.desktop.key("Home", "Down", "Return")
        self.pastes("second")
        self.file_becomes("Clip", ["second", "third", *before[2:]])
        self.desktop.key("Down", "Down", "Delete")
        self.question_is_answered("Delete selected entries?")
        self.file_becomes("Clip", ["second", "third", *before[3:]])
        self.reader.tab_to("Current clipboard text")
        self.desktop.key("ctrl+a")
        self.type("typed")
        self.pastes("typed")
        self.reader.tab_to("Clear clipboard", True)
        self.desktop.key("space")
        wait_for("an empty clipboard", lambda: not self.desktop.paste(), 5)

    def test_pad(self):
        self.start("Pad")
        self.reader.tab_to("Name of the Pad entry")
        self.type("Greeting")
        self.desktop.key("Return")
        self.type("Dear all,")
        self.desktop.key("Return")
        self.type("hello")
        self.reader.tab_to("Add")
        before = self.file("Pad")
        self.desktop.key("space")
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
        self.question_is_answered("Delete selected entries?")
        self.file_becomes("Pad", before)

    def test_todo(self):
        self.start("ToDo")
        self.reader.tab_to("Text of the ToDo entry")
        before = self.file("ToDo")
        self.type("water the plants")
        self.desktop.key("Return")
        wait_for("the task", lambda: len(self.file("ToDo")) == len(before) + 1, 5)
        self.reader.tab_to("ToDo-List", True)
        self.desktop.key("End", "space", "ctrl+Home")
        wait_for("the marked task on top", lambda: "water the plants" in self.file("ToDo")[0], 5)
        self.assertIn("CHECKED", self.node("list item", "water the plants")["states"])
        self.reader.tab_to("Refresh")
        self.desktop.key("space")
        wait_for("no marked task", lambda: not any("water the plants" in entry for entry in self.file("ToDo")), 5)

    def in_front(self, title):
        window = self.desktop.window(title)
        active = self.desktop.property(self.desktop.root, "_NET_ACTIVE_WINDOW")
        return window and self.desktop.is_viewable(window) and list(active or ()) == [window.id]

    def test_a_dialog_gives_the_focus_back(self):
        self.start()
        for button, title in (("Settings...", "Quillbox Settings"), ("Info...", "Quillbox 4.31 Info")):
            self.reader.tab_to(button, True)
            self.desktop.key("space")
            wait_for(f"{title} in front", lambda: self.in_front(title), 5)
            self.desktop.key("Escape")
            wait_for(f"Quillbox in front after {title}", lambda: self.in_front("Quillbox"), 5)


class DragAndDrop(Pages):
    def drop(self, offers, list_name):
        with DragSource(self.desktop.name, offers) as source:
            return source.drop(self.window, *self.middle("list", list_name))

    def text(self, text):
        return {"text/plain;charset=utf-8": text.encode(), "UTF8_STRING": text.encode()}

    def test_texts_from_another_program(self):
        self.start()
        clip, pad, todo = self.file("Clip"), self.file("Pad"), self.file("ToDo")
        pages = (("Clip-List", "Clip"), ("Pad-List", "Pad"), ("ToDo-List", "ToDo"))
        for page, (name, _) in enumerate(pages):
            if page:
                self.desktop.key(*["ctrl+Tab"] * (1, 3)[page - 1])  # from the first page to the second and the fifth
            before = [self.file(file) for file in ("Clip", "Pad", "ToDo")]
            self.assertFalse(self.drop({"image/png": PNG}, name), "a picture")
            self.assertEqual(before, [self.file(file) for file in ("Clip", "Pad", "ToDo")])
            self.assertTrue(self.drop(self.text(f"dropped ä on {name}"), name), "a text")
            if page == 0:
                self.file_becomes("Clip", ["dropped ä on Clip-List", *clip])
                self.pastes("dropped ä on Clip-List")
            elif page == 1:
                self.file_becomes("Pad", ["[No Name]\r\ndropped ä on Pad-List", *pad])
            else:
                wait_for("the task", lambda: len(self.file("ToDo")) == len(todo) + 1, 5)
                self.assertIn("dropped ä on ToDo-List", self.file("ToDo")[-1])

    def drag(self, item):
        """Drags a row of a list to another program and returns the text that it gets."""
        with DropTarget(self.desktop.name, 20, 20) as target:
            x, y = self.middle("list item", item)
            hand = self.desktop.start(
                "xdotool", "mousemove", x, y, "mousedown", 1, "mousemove", x - 20, y + 10, "sleep", 0.1, "mousemove",
                60, 60, "sleep", 0.1, "mousemove", *target.middle, "sleep", 0.1, "mouseup", 1)
            self.assertTrue(target.serve(lambda: target.dropped and hand.poll() is not None), "nothing was dropped")
            return target.texts

    def test_texts_to_another_program(self):
        self.start()
        self.copy("a text\nof two lines")
        self.assertEqual(["a text\nof two lines"], self.drag("a text↵of two lines"))
        self.desktop.key("ctrl+Tab")
        self.reader.tab_to("Pad-List")
        self.desktop.key("Home", "shift+Down")
        slots = [entry.partition("\r\n") for entry in self.file("Pad")[:2]]
        self.assertEqual(["\r\n".join(text for _, _, text in slots)], self.drag(slots[0][0]))
        self.next_copy_is_taken()


if __name__ == "__main__":
    unittest.main()
