"""Another program that is typed into, and what to type."""
import re
import time

from desktop import wait_for
from screen import RECEIVER

PATIENCE = 60  # seconds; what is waited for comes at once on a machine that isn't busy
LETTERS = {1: "S-", 4: "C-", 8: "A-"}
FUNCTION_KEYS = range(1, 25)
# Strings; the keysyms that come, and how often a modifier goes down on X11: groups keep theirs.
KEYS = (
    ("+a^b%c", "S-A C-b A-c", 3), ("^%+x", "S-C-A-X", 3), ("^A^@", "S-C-A S-C-at", 4),
    ("^(ab)c", "C-a C-b c", 1), ("+(1)", "S-exclam", 1), ("+é^é", "S-Eacute C-eacute", 2),
    ("ABC", "S-A S-B S-C", 1), ("%{TAB}%{TAB}", "A-Tab A-Tab", 2), ("%({TAB}{TAB})", "A-Tab A-Tab", 1),
    ("%{TAB 3}", "A-Tab A-Tab A-Tab", 1), ("^(a+(bc)d)", "C-a S-C-B S-C-C C-d", 2),
    ("{LEFT 3}{h 2}", "Left Left Left h h", 0), ("~\r\n\t+{TAB}", "Return Return Tab S-ISO_Left_Tab", 1),
    ("{{}{}}{+}", "S-braceleft S-braceright S-plus", 1),
    ("{BS}{DEL}{ESC}{HOME}{END}{PGUP}{PGDN}{INS}", "BackSpace Delete Escape Home End Prior Next Insert", 0),
    ("{UP}{DOWN}{RIGHT}{CAPSLOCK 2}{NUMLOCK 2}{SCROLLLOCK 2}",
     "Up Down Right Caps_Lock Caps_Lock Num_Lock Num_Lock Scroll_Lock Scroll_Lock", 0),
    ("".join(f"{{F{number}}}" for number in FUNCTION_KEYS), " ".join(f"F{number}" for number in FUNCTION_KEYS), 0),
    ("{ADD}{SUBTRACT}{MULTIPLY}{DIVIDE}{PRTSC}{HELP}{CLEAR}",
     "KP_Add KP_Subtract KP_Multiply KP_Divide Print Help Clear", 0),
    ("%{F4}{BREAK}", "A-F4 C-Break", 2))


def mixed_text(rounds):
    """Every character of a keyboard and some that few have, again and again."""
    return ("".join(map(chr, range(32, 127))) + "½€ßé漢\tÄöЖжαΩ\n^´`«~é€A€b€") * rounds


def quoted(text):
    """The script that types it."""
    return re.sub(r"[+^%~(){}[\]]", r"{\g<0>}", text)


class Receiver:
    """A window of another program; see key-receiver."""

    def __init__(self, desktop, *how):
        folder = desktop.folder / f"receiver {len(desktop.processes)}"
        folder.mkdir()
        self.text_file, self.events_file = folder / "text", folder / "events"
        self.process = desktop.start(RECEIVER, self.text_file, self.events_file, *how)
        wait_for("the receiver", self.text_file.exists, PATIENCE)
        self.window, self.focused = (desktop.display.create_resource_object("window", int(number))
                                     for number in self.events_file.read_text().split())

    def text(self):
        return self.text_file.read_text("utf-8")

    def gets(self, text):
        wait_for(f"{text[:40]!r}", lambda: len(self.text()) >= len(text), PATIENCE)
        time.sleep(0.03)  # for what must not come
        assert self.text() == text, f"{self.text()[-40:]!r} at the end"

    def presses(self):
        """The keysyms that came, "S-A C-b", and how often a modifier was pressed; each key goes up once."""
        down, names, modifiers = set(), [], 0
        for line in self.events_file.read_text().splitlines()[1:]:
            press, code, *what = line.split()
            assert (press == "+") != (code in down), "pressed twice, or released"
            down ^= {code}
            if what and re.fullmatch(r"(Shift|Control|Alt|Meta|Super)_[LR]|ISO_Level\d_Shift", what[1]):
                modifiers += 1
            elif what:
                names.append("".join(letter for bit, letter in LETTERS.items() if int(what[0]) & bit) + what[1])
        return (" ".join(names), modifiers) if not down else None
