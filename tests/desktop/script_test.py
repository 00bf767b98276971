"""Scripts: entries of the Pad-List that are typed into the window that had the focus."""
import os
import pathlib
import signal
import subprocess
import time
import unittest

from desktop import Desktop, wait_for

RECEIVER = os.environ.get("QUILLBOX_KEY_RECEIVER", "")
M = "\u00bd" * 5


def pad_file(*entries):
    lines = [f"{M} [PAD ENTRY FILE 4.31, DO NOT EDIT] {M}"]
    for number, (name, text) in enumerate(entries):
        lines += [f"{M} [PAD ENTRY {number}] {M}", name, text]
    lines += [f"{M} [PAD ENTRY FILE END] {M}", ""]
    return b"\xef\xbb\xbf" + "\r\n".join(lines).encode("utf-8")


class Script(unittest.TestCase):
    def setUp(self):
        self.screen = Desktop()
        self.screen.__enter__()
        self.addCleanup(self.screen.__exit__, None, None, None)
        self.screen.settings()
        self.typed = pathlib.Path(self.screen.folder) / "typed"

    def start(self, script):
        self.screen.data.mkdir(parents=True, mode=0o700)
        (self.screen.data / "PadData.qbx").write_bytes(pad_file(("Hello", "{SCRIPT}" + script)))
        self.screen.start_program()
        wait_for("the icon", self.screen.icons)

    def pick(self):
        """The entries of the Pad-List are a submenu, the sixth item of the tray menu from below."""
        self.screen.open_menu()
        self.screen.key(*["Up"] * 6)
        self.screen.key("Right")
        time.sleep(0.3)
        self.screen.key("Return")

    def keyboard(self):
        """The whole keyboard map."""
        command = ["xkbcomp", "-w0", self.screen.name, "-"]
        return subprocess.run(command, capture_output=True, check=True).stdout

    def text(self):
        return self.typed.read_text("utf-8") if self.typed.exists() else ""

    def test_goes_to_the_window_that_had_the_focus(self):
        self.start("Hallo {+}漢é{LEFT 2}~½😀")
        self.screen.start(RECEIVER, "--pings", self.typed)
        wait_for("the receiver", self.typed.exists)
        self.pick()
        wait_for("the text", lambda: self.text() == "Hallo +漢é\n½😀")
        time.sleep(0.3)
        self.assertEqual(self.text(), "Hallo +漢é\n½😀")

    def test_a_bad_string_types_nothing_and_says_so(self):
        self.start("abc{END")
        self.screen.start(RECEIVER, "--pings", self.typed)
        wait_for("the receiver", self.typed.exists)
        self.pick()
        wait_for("the message", lambda: self.screen.window("Quillbox Script Error"))
        self.assertEqual(self.text(), "")

    def test_a_start_after_a_kill_puts_the_keyboard_right(self):
        self.start("+({é 32767}{漢 32767}{é 32767}{漢 32767})")
        self.screen.start(RECEIVER, "--pings", self.typed)
        wait_for("the receiver", self.typed.exists)
        before = self.keyboard()
        self.pick()
        wait_for("the first keys", self.text)
        self.screen.stop_program(signal.SIGKILL)
        self.assertNotEqual(self.keyboard(), before)
        self.screen.start_program()
        wait_for("the map from before", lambda: self.keyboard() == before)


if __name__ == "__main__":
    unittest.main()
