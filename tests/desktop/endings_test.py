#!/usr/bin/env python3
"""The ways in which the program ends, and that nothing is lost by any of them."""
import os
import signal
import time
import unittest

import datafiles
from case import DesktopCase
from desktop import wait_for

FILES = ("ClipData.qbx", "PadData.qbx", "ToDoData.qbx")


class Endings(DesktopCase):
    def assert_files_are_whole(self):
        for name in FILES:
            self.assertIsNotNone(datafiles.entries(self.desktop.data / name), name)
        # No half of a write is left behind.
        self.assertEqual(sorted(FILES), sorted(path.name for path in self.desktop.data.iterdir()))

    def start_with(self, text):
        self.desktop.start_program()
        self.desktop.copy(text)
        self.newest_becomes(text)

    def test_signals_take_the_exit_path(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number.name):
                self.start_with(f"before {number.name}")
                for name in FILES[1:]:
                    (self.desktop.data / name).unlink(missing_ok=True)
                self.assertEqual(0, self.desktop.stop_program(number))
                self.assert_files_are_whole()

    def test_exit_from_the_menu(self):
        self.start_with("before the exit")
        self.desktop.open_menu()
        self.desktop.key("x")
        self.assertEqual(0, self.desktop.program.wait(10))
        self.assert_files_are_whole()

    def test_signal_while_the_menu_is_open(self):
        self.start_with("menu open")
        self.desktop.open_menu()
        self.assertEqual(0, self.desktop.stop_program())
        self.assert_files_are_whole()

    def test_server_goes_away(self):
        self.start_with("before the crash")
        self.desktop.show_window()
        self.desktop.kill_server()
        self.assertIsNotNone(self.desktop.program.wait(10))
        self.assert_files_are_whole()
        self.assertEqual("before the crash", datafiles.newest(self.desktop))

    def test_start_without_a_display_says_so(self):
        for display, said in (("", "DISPLAY is not set"), (":54321", "DISPLAY=:54321 cannot be reached")):
            with self.subTest(said):
                program = self.desktop.start(
                    self.desktop.program_file, environment={"DISPLAY": display, "QT_QPA_PLATFORM": "xcb"})
                self.assertEqual(1, program.wait(60))
                self.assertIn(said, self.desktop.log("quillbox"))

    def test_kill_while_writing(self):
        # A first start without a file begins with an empty clipboard.
        self.start_with("there is a file")
        for number in range(8):
            text = f"{number} " + "k" * 20_000
            self.desktop.copy(text)
            time.sleep(0.013 * number)
            self.desktop.stop_program(signal.SIGKILL)
            path = self.desktop.data / "ClipData.qbx"
            self.assertIsNotNone(datafiles.entries(path), f"broken after {number}")
            self.desktop.start_program()
            # What was on the clipboard meanwhile is taken by the first look at it.
            self.newest_becomes(text)

    def test_two_starts_at_once_are_one_program(self):
        programs = [self.desktop.start_program(wait=False) for _ in range(2)]
        wait_for("the message of the second one", lambda: self.desktop.window("Quillbox already running"))
        wait_for("the icon", self.desktop.icons)
        time.sleep(0.5)
        self.assertEqual(1, len(self.desktop.icons()))
        self.desktop.picture("already-running")
        message = self.desktop.window("Quillbox already running")
        self.desktop.xdotool("windowactivate", "--sync", message.id, "key", "Return")
        wait_for("the end of the second one", lambda: any(program.poll() is not None for program in programs))
        time.sleep(0.3)
        self.assertEqual(1, sum(program.poll() is None for program in programs))
        self.next_copy_is_taken()

    def test_only_the_user_can_read_what_it_writes(self):
        before = os.umask(0)
        try:
            self.start_with("private")
        finally:
            os.umask(before)
        self.assertEqual(0, self.desktop.stop_program())
        for path in (self.desktop.data, *self.desktop.data.iterdir()):
            self.assertEqual(0o700 if path.is_dir() else 0o600, path.stat().st_mode & 0o777, path)


if __name__ == "__main__":
    unittest.main()
