"""Keys. Scripts: entries of the Pad-List that are typed into the window that had the focus; and the one key that opens
the window."""
import signal

import datafiles
from case import DesktopCase
from desktop import wait_for


class Script(DesktopCase):
    def start(self, script):
        self.desktop.script(script)
        self.desktop.start_program()
        self.typed = self.desktop.key_receiver()

    def pick(self):
        """The entries of the Pad-List are a submenu, the sixth item of the tray menu from below."""
        self.desktop.open_menu()
        low = len(self.desktop.popups())
        self.desktop.key(*["Up"] * 6, "Right")
        wait_for("the submenu", lambda: len(self.desktop.popups()) > low)
        self.desktop.key("Return")

    def test_goes_to_the_window_that_had_the_focus(self):
        self.start("Hallo {+}漢é{LEFT 2}~½😀")
        self.pick()
        wait_for("the text", lambda: self.typed.read_text("utf-8") == "Hallo +漢é\n½😀")

    def test_a_start_after_a_kill_puts_the_keyboard_right(self):
        def keyboard():
            return self.desktop.run("xkbcomp", "-w0", self.desktop.name, "-", capture_output=True).stdout

        self.start("+({é 32767}{漢 32767}{é 32767}{漢 32767})")
        before = keyboard()
        self.pick()
        wait_for("the first keys", lambda: self.typed.read_text("utf-8"))
        self.desktop.stop_program(signal.SIGKILL)
        self.assertNotEqual(keyboard(), before)
        self.desktop.start_program()
        wait_for("the map from before", lambda: keyboard() == before)


class OneKey(DesktopCase):
    SETTINGS = {"ShowKey": "Ctrl+Alt+V", "PastePick": "1", "ClipEntriesMax": "99"}

    def come(self):
        self.desktop.key("ctrl+alt+v")
        self.in_front()
        wait_for("the find field", self.reader.focused)  # the window knows that it is in front

    def test_one_of_a_hundred_is_found_and_pasted_without_the_mouse(self):
        entries = [f"{number} bottles of beer on the wall" for number in range(99)]
        datafiles.write(self.desktop.data / "ClipData.qbx", [*entries, "an old Needle"])
        self.start_reading()
        typed = self.desktop.key_receiver()
        self.desktop.key("Num_Lock", "Caps_Lock")  # with both locks on until the end
        self.come()
        self.desktop.key(*"need")
        self.find("Quillbox", role="label", name="1 of 100")
        self.desktop.key("Return")
        wait_for("Ctrl+V in the other program", lambda: typed.read_bytes() == b"\x16")
        self.pastes("an old Needle")
        self.assertFalse(self.desktop.shown())
        self.come()
        self.desktop.key("ctrl+alt+v")
        self.gone()
