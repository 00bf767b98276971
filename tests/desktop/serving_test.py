#!/usr/bin/env python3
"""The program as owner of the clipboard, asked by clients of all kinds."""
import threading
import time
import unittest

from Xlib import X, Xatom

from case import DesktopCase
from clients import Owner, Reader
from desktop import wait_for

LARGE = 5 * 1024 * 1024


class Serving(DesktopCase):
    def own(self, text):
        """A program copies the text and ends: from then on Quillbox serves it."""
        owner = Owner(self.desktop.name, {"UTF8_STRING": text})
        self.assertTrue(owner.served.wait(20))
        time.sleep(0.3)
        owner.close()
        atom = self.desktop.display.intern_atom("CLIPBOARD")
        wait_for("Quillbox as owner", lambda: self.desktop.display.get_selection_owner(atom))

    def reader(self):
        reader = Reader(self.desktop.name)
        self.addCleanup(reader.close)
        return reader

    def setUp(self):
        super().setUp()
        self.desktop.start_program()

    def test_three_pastes_at_once_one_of_which_stops(self):
        text = (b"%07d\n" * (LARGE // 8)) % tuple(range(LARGE // 8))
        self.own(text)
        stopped, one, two = self.reader(), self.reader(), self.reader()
        stopped.ask("UTF8_STRING")
        self.assertLess(len(stopped.take(parts=2)[2]), LARGE)
        results = {}

        def paste(name, reader):
            results[name] = reader.paste(seconds=30)

        threads = [threading.Thread(target=paste, args=pair) for pair in (("one", one), ("two", two))]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for name in ("one", "two"):
            kind, width, value = results.get(name, (None, 0, b""))
            self.assertEqual(("UTF8_STRING", 8, len(text)), (kind, width, len(value)))
            self.assertEqual(text, value)
        # While one client still holds its half, the clipboard works as before.
        self.desktop.copy("next")
        self.newest_becomes("next")

    def test_targets(self):
        self.own(b"served")
        reader = self.reader()
        kind, width, atoms = reader.paste("TARGETS")
        self.assertEqual(("ATOM", 32), (kind, width))
        names = {reader.display.get_atom_name(atom) for atom in atoms}
        self.assertLessEqual({"TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING", "STRING"}, names)
        for name in names - {"TARGETS", "MULTIPLE", "SAVE_TARGETS"}:
            kind, _, value = reader.paste(name)
            self.assertIsNotNone(kind, f"{name} is offered but refused")
            if name != "TIMESTAMP":
                self.assertEqual(b"served", bytes(value), name)

    def test_what_is_not_offered_is_refused_at_once(self):
        self.own(b"served")
        start = time.monotonic()
        self.assertEqual((None, 0, None), self.reader().paste("image/png"))
        self.assertLess(time.monotonic() - start, 2)

    def test_string_is_latin_1(self):
        self.own("Größe".encode())
        self.assertEqual("Größe".encode("latin-1"), bytes(self.reader().paste("STRING")[2]))

    def test_timestamp(self):
        self.own(b"served")
        kind, width, value = self.reader().paste("TIMESTAMP")
        self.assertEqual(("INTEGER", 32, 1), (kind, width, len(value)))
        self.assertNotEqual(0, value[0])

    def test_multiple(self):
        self.own(b"several at once")
        reader = self.reader()
        atom = reader.display.intern_atom
        pairs = [atom("UTF8_STRING"), atom("A"), atom("image/png"), atom("B"), atom("TIMESTAMP"), atom("C")]
        reader.window.change_property(reader.slot, atom("ATOM_PAIR"), 32, pairs)
        reader.ask("MULTIPLE")
        answer = reader._next(X.SelectionNotify, time.monotonic() + 10)
        self.assertEqual(reader.slot, answer.property)
        found = reader.window.get_full_property(reader.slot, X.AnyPropertyType)
        self.assertEqual([pairs[0], pairs[1]], list(found.value)[:2])
        self.assertIn(X.NONE, list(found.value)[2:4], "the refused one is marked")
        value = reader.window.get_full_property(atom("A"), X.AnyPropertyType)
        self.assertEqual(b"several at once", bytes(value.value))
        self.assertIsNone(reader.window.get_full_property(atom("B"), X.AnyPropertyType))
        self.assertEqual(Xatom.INTEGER, reader.window.get_full_property(atom("C"), X.AnyPropertyType).property_type)


if __name__ == "__main__":
    unittest.main()
