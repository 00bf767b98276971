"""Starts and ends: nobody is left without a word, and nothing is lost by any end."""
import signal

from case import HELP, DesktopCase
from desktop import wait_for

LISTS = ("Clip", "Pad", "ToDo")


class Endings(DesktopCase):
    def test_every_end_writes_the_lists(self):
        def with_the_menu_open():
            self.desktop.open_menu()
            self.desktop.program.terminate()

        def by_the_server():
            self.desktop.show_window()
            self.desktop.kill_server()

        signals = {number.name: lambda number=number: self.desktop.program.send_signal(number)
                   for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)}
        for name, end in {**signals, "menu": lambda: self.open_from_menu("x"), "menu open": with_the_menu_open,
                          "server": by_the_server}.items():
            with self.subTest(name):
                self.desktop.start_program()
                self.copy(f"before {name}")
                for other in LISTS[1:]:
                    (self.desktop.data / f"{other}Data.qbx").unlink(missing_ok=True)
                end()
                code = self.desktop.program.wait(60)
                self.assertTrue(code == 0 or name == "server", code)
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


class FirstStart(DesktopCase):
    SETTINGS = None

    def test_help_before_the_window_and_nothing_lost_by_a_kill(self):
        self.desktop.start_program()
        order = [self.titled(title).id for title in ("Quillbox", HELP)]
        wait_for("the help in front", lambda: order == [each for each in self.desktop.stacking() if each in order])
        self.copy("Grüße aus Köln", "Καλημέρα κόσμε")
        before = self.file("Clip")
        self.desktop.stop_program(signal.SIGKILL)
        self.desktop.start_program()
        self.next_copy_is_taken()
        self.assertEqual(before, self.file("Clip")[1:])
