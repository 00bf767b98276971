#!/usr/bin/env python3
"""Whatever an owner of the clipboard does, and whoever asks for what we own: the program goes on, nothing is lost."""
import threading
import unittest

import datafiles
from case import DesktopCase
from clients import DiesInTheMiddle, Owner, Reader, Silent
from desktop import wait_for

LARGE = b"".join(b"%07d\n" % number for number in range(640 * 1024))  # 5 MiB
HUGE = b"0123456789abcdef" * (50 * 1024 * 1024 // 16)
MOST = 32_000  # characters of an entry


class Owners(DesktopCase):
    def setUp(self):
        super().setUp()
        self.desktop.start_program()

    def owner_id(self):
        return self.desktop.display.get_selection_owner(self.desktop.display.intern_atom("CLIPBOARD"))

    def test_an_owner_that_never_answers_holds_nobody_up(self):
        with Silent(self.desktop.name, {"UTF8_STRING": b"never"}) as owner:
            wait_for("the question to the owner", lambda: owner.asked)
            self.desktop.open_menu()
            self.desktop.key("Escape")
            self.desktop.show_window()
            self.next_copy_is_taken()

    def test_bad_owners_leave_the_next_copy_alone(self):
        def broken(text):
            return lambda name: Owner(name, {"UTF8_STRING": text})

        for what, make in (("dies", lambda name: DiesInTheMiddle(name, {"UTF8_STRING": b""})),
                           ("a picture", lambda name: Owner(name, {"image/png": b"\x89PNG" + bytes(1000)})),
                           ("half a character", broken(b"\xff\xfe broken \xc3")), ("nul", broken(b"nul \0 inside")),
                           ("controls", broken(b"\x01\x02\x1b[2J"))):
            with self.subTest(what), make(self.desktop.name) as owner:
                wait_for("the question to the owner", lambda: owner.asked)
                self.next_copy_is_taken()
                self.assertNotIn("PNG", "".join(self.file("Clip")))

    def test_fifty_megabytes(self):
        with Owner(self.desktop.name, {"UTF8_STRING": HUGE}) as owner:
            self.assertTrue(owner.served.wait(60), "the text was not taken as a whole")
            self.newest_becomes(HUGE[:MOST].decode())
        self.next_copy_is_taken()

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

    def test_three_pastes_at_once_one_of_which_stops(self):
        with Owner(self.desktop.name, {"UTF8_STRING": LARGE}) as owner:
            self.assertTrue(owner.served.wait(60))
            self.newest_becomes(LARGE[:MOST].decode())
            given = owner.window.id
        wait_for("Quillbox as owner", lambda: self.owner_id() not in (0, given))
        stopped, one, two = readers = [Reader(self.desktop.name) for _ in range(3)]
        for reader in readers:
            self.addCleanup(reader.close)
        stopped.ask("UTF8_STRING")
        self.assertLess(len(stopped.take(parts=2)[2]), len(LARGE))
        results = []
        threads = [threading.Thread(target=lambda reader=reader: results.append(reader.paste(seconds=60))) for reader in (one, two)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual([("UTF8_STRING", 8, True)] * 2, [(kind, width, value == LARGE) for kind, width, value in results])
        # While one client still holds its half, the clipboard works as before.
        self.next_copy_is_taken()

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


class Manager(Owner):
    """Owns CLIPBOARD_MANAGER and saves the clipboard's text when its owner asks for that."""

    def __init__(self, name):
        self.asked_to_save, self.saved = threading.Event(), None
        super().__init__(name, {}, selection="CLIPBOARD_MANAGER")

    def answer(self, question, target):
        if target != "SAVE_TARGETS":
            return super().answer(question, target)
        reader = Reader(self.display_name)
        self.saved = bytes(reader.paste()[2])
        reader.close()
        self.put(question, self.atom("NULL"), 32, [])
        self.asked_to_save.set()
        return None


if __name__ == "__main__":
    unittest.main()
