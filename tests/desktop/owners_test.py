#!/usr/bin/env python3
"""Whatever an owner of the clipboard does, and whoever asks for what we own: the program goes on, nothing is lost."""
import unittest

import datafiles
from case import DesktopCase
from clients import DragSource, Manager, Owner, silent
from desktop import wait_for


class Owners(DesktopCase):
    def setUp(self):
        super().setUp()
        self.desktop.start_program()

    def owner_id(self):
        return self.desktop.display.get_selection_owner(self.desktop.display.intern_atom("CLIPBOARD"))

    def test_an_owner_that_never_answers_holds_nobody_up(self):
        with Owner(self.desktop.name, {"TARGETS": silent}) as owner:
            wait_for("the question to the owner", lambda: owner.asked)
            self.desktop.open_menu()
            self.desktop.key("Escape")
            self.desktop.show_window()
            self.next_copy_is_taken()

    def test_drops_wait_for_nobody(self):
        """Five of a source that says nothing; then one of files, which are no text, and one of a text."""
        window = self.desktop.show_window()
        left, top, width, height = self.desktop.place(window)
        on_list, on_field = ((window, left + width // 2, top + height * part // 4) for part in (1, 3))
        with DragSource(self.desktop.name, {"text/plain": silent, "text/uri-list": silent}) as source:
            sent = []

            def five_dropped():
                if source.told.count("XdndFinished") == len(sent):
                    sent.append(source.drop(*(on_list, on_field)[len(sent) % 2]))
                return len(sent) == 5

            wait_for("the end of four drags", five_dropped)
            self.desktop.open_menu()
            self.desktop.key("Escape")
            self.next_copy_is_taken()
            self.assertIn("text/plain", source.asked)
            self.assertEqual({"XdndActionCopy"}, source.taken)
        before = self.file("Clip")
        for offers in {"text/plain": b"/a", "text/uri-list": b"file:///a\r\n"}, {"UTF8_STRING": "a \u20ac".encode()}:
            with DragSource(self.desktop.name, offers) as source:
                source.drop(*on_list)
                wait_for("the end of the drag", lambda: "XdndFinished" in source.told)
        wait_for("the entry", lambda: self.file("Clip") == ["a \u20ac", *before])

    def test_a_text_outlives_its_program_and_a_clear_stays_a_clear(self):
        owner = Owner(self.desktop.name, {"UTF8_STRING": b"outlives its program"})
        self.newest_becomes("outlives its program")
        owner.close()
        self.pastes("outlives its program")
        with Owner(self.desktop.name, {"UTF8_STRING": b"to be cleared"}) as owner:
            self.newest_becomes("to be cleared")
            owner.clear()
            wait_for("the clear taken", lambda: datafiles.newest(self.desktop) == "")
            self.assertEqual(0, self.owner_id())
        self.assertIsNone(self.desktop.paste())
        self.next_copy_is_taken()

    def test_a_secret_is_kept_by_nobody(self):
        """Nor in any list, menu or tip, all of which are the program's memory; also when it is offered again unmarked."""
        self.copy("before the secret")
        secret = "correct horse battery staple"
        for offers in {"STRING": secret.encode(), "x-kde-passwordManagerHint": b"Secret\n"}, {"UTF8_STRING": secret.encode()}:
            with Owner(self.desktop.name, offers) as owner:
                wait_for("the text taken", lambda: owner.asked[-1:] == list(offers)[:1])
                wait_for("the blank row", lambda: datafiles.newest(self.desktop) == "")
            wait_for("nobody", lambda: self.owner_id() == 0)
            self.assertIsNone(self.desktop.paste())
        self.desktop.open_menu()
        self.assertEqual([], self.desktop.traces(secret))
        self.assertIn("memory", self.desktop.traces("before the secret"))
        self.desktop.key("Escape")
        self.next_copy_is_taken()
        self.assertEqual(0, self.desktop.stop_program())

    def test_the_text_is_handed_over_at_the_end(self):
        """To a clipboard manager of the tests' own: what we own is still there when we have gone."""
        manager = Manager(self.desktop.name)
        self.addCleanup(manager.close)
        self.copy("older", "newer")
        self.desktop.open_menu()
        self.desktop.key("2")
        self.pastes("older")
        self.assertEqual(0, self.desktop.stop_program())
        self.assertTrue(manager.asked_to_save.wait(10), "nobody asked the manager")
        self.assertEqual(b"older", manager.saved)


if __name__ == "__main__":
    unittest.main()
