"""Starts and ends: nobody is left without a word, and nothing is lost by any end, nor by a full disk."""
import contextlib
import os
import signal
import subprocess

from case import DesktopCase
from desktop import wait_for

LISTS = ("Clip", "Pad", "ToDo")


class Endings(DesktopCase):
    def test_every_end_writes_the_lists(self):
        def with_the_menu_open():
            self.desktop.open_menu()
            self.desktop.program.terminate()

        def by_the_server():
            self.desktop.show_window()
            self.desktop.end(self.desktop.server)

        signals = {number.name: lambda number=number: self.desktop.program.send_signal(number)
                   for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)}
        for name, end in {**signals, "menu": lambda: self.open_from_menu("x"), "menu open": with_the_menu_open,
                          "server": by_the_server}.items():
            with self.subTest(name):
                self.desktop.start_program()
                self.desktop.program.send_signal(signal.SIGPIPE)  # as a server that goes away may; it ends nothing
                self.copy(f"before {name}")
                for other in LISTS[1:]:
                    (self.desktop.data / f"{other}Data.qbx").unlink(missing_ok=True)
                end()
                code = self.desktop.program.wait(60)
                self.assertIn(code, (0, 1) if name == "server" else (0,))
                self.assertNotIn(None, map(self.file, LISTS))
                self.assertEqual(f"before {name}", self.file("Clip")[0])

    def test_start_without_a_display_says_so(self):
        for display, said in (("", "DISPLAY is not set"), (":54321", "DISPLAY=:54321 cannot be reached")):
            program = self.desktop.start(self.desktop.program_file,
                                         environment={"DISPLAY": display, "QT_QPA_PLATFORM": "xcb"})
            self.assertEqual(1, program.wait(60))
            self.assertIn(said, self.desktop.log("quillbox"))

    def test_two_starts_at_once_are_one_program(self):
        programs = [self.desktop.start_program(wait=False) for _ in range(2)]
        self.titled("Quillbox already running")
        wait_for("the icon", self.desktop.icons)
        self.assertFalse(self.desktop.shown(), "the message stands alone")
        self.leave("Quillbox already running")
        wait_for("the end of the second one", lambda: sum(program.poll() is None for program in programs) == 1)
        self.assertEqual(1, len(self.desktop.icons()))
        self.next_copy_is_taken()

    def test_full_disk(self):
        self.desktop.data.mkdir(parents=True)
        mount = ["mount", "-t", "tmpfs", "-o", "size=64k,mode=700", "tmpfs", self.desktop.data]
        if os.getuid() != 0 or subprocess.run(mount, capture_output=True).returncode != 0:
            self.skipTest("no right to mount a small disk")
        self.addCleanup(subprocess.run, ["umount", "--lazy", self.desktop.data], check=True)
        self.desktop.start_program()
        self.copy("one", "two")
        ballast = self.desktop.data / "ballast"
        with contextlib.suppress(OSError), open(ballast, "wb", buffering=0) as file:
            while True:
                file.write(b"x" * 512)
        self.desktop.copy("while it is full")
        self.leave("Quillbox Message")
        self.pastes("while it is full")
        self.assertEqual(["two", "one"], self.file("Clip")[:2], "the old file is whole")
        ballast.unlink()
        self.copy("after it")
        self.assertEqual(["after it", "while it is full", "two", "one"], self.file("Clip")[:4])
