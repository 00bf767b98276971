"""A tenth of a busy day: what is done with the program in 48 minutes, without the pauses between.

The amounts of eight hours: a copy every 14 seconds (2000 of texts, and 130 that are pictures, secrets or clears), a
pick from the menu and a look into it every minute, two pastes for each pick, the window ten times an hour with all of
its pages, 80 dialogs, 30 tips, 20 scripts. Owners die or hang more often than on any day, so that what the program
keeps of them for a while (32 windows) is complete after the first tenth. Each tenth is the same but for the texts, so
that the program ends each one with as much to remember.
"""
import collections
import os
import random
import re

from clients import Owner, Reader, dies_in_the_middle, silent
from datafiles import M
from desktop import wait_for
from owners import Owner as Copier
from person import receiver

TENTH = {
    "copy": 136, "long copy": 4, "copy of one that quits": 20, "copy of one that dies over it": 20,
    "copy of one that hangs": 20, "picture": 5, "secret": 3, "clear": 3, "clear from the menu": 2,
    "pick": 50, "menu": 50, "window": 8, "settings OK": 2, "settings cancel": 2, "info": 2,
    "start help": 2, "tip": 3, "script": 2,
}
# Characters; most of what people copy is short.
LENGTHS = (6, 11, 27, 40, 63, 18, 90, 150, 35, 8, 220, 500, 77, 1200, 55, 3000, 12, 9000, 31, 32000)
LONG_LENGTHS = (32001, 60_000, 400_000, 2_000_000)
LONGEST = 32000  # of an entry
WORDS = ("Meeting on Tuesday ", "https://example.org/?a=1&b=2 ", "Grüße aus Köln\n", "Καλημέρα κόσμε ", "a\tb ", "{x} ")
LAST = ["milk", "bread", "butter", "salt", "a small text"]  # so that the menu has one size after each tenth
SCRIPT = "Dear all, (1+1) "
MAIN, HELP, INFO = "Quillbox", "General Starting Information on Quillbox", "Quillbox 4.31 Info"
SETTINGS, WARNING = "Quillbox Settings", "Quillbox: Entry larger than 32KB"
SECRET = "x-kde-passwordManagerHint"
SEPARATORS = {code: re.compile(rf"\r\n{M} \[CLIP ENTRY (?:FILE END|\d+)\] {M}\r\n".encode(code))
              for code in ("cp1252", "utf-8")}


def prepare(desktop):
    """Before the program's start: its settings, and a script in the Pad-List."""
    desktop.settings(ClipEntriesMax=99, Warning=1)
    desktop.data.mkdir(mode=0o700, parents=True, exist_ok=True)
    for name in ("ClipData.qbx", "ToDoData.qbx"):
        (desktop.data / name).touch()  # without entries; without files there would be examples
    typed = "".join("{" + each + "}" if each in "+()" else each for each in SCRIPT)
    lines = [f"{M} [PAD ENTRY FILE 4.31, DO NOT EDIT] {M}", f"{M} [PAD ENTRY 0] {M}", "Hello", "{SCRIPT}" + typed,
             f"{M} [PAD ENTRY FILE END] {M}", ""]
    (desktop.data / "PadData.qbx").write_bytes("\r\n".join(lines).encode("cp1252"))


class Day:
    def __init__(self, scene, person):
        self.scene, self.person, self.name = scene, person, scene.desktop.name
        self.file = scene.desktop.data / "ClipData.qbx"
        self.copier, self.reader = Copier(self.name), Reader(self.name)
        self.done = collections.Counter()
        self.looks = []
        self.number = 0
        self.kinds = {
            "copy": self.copy, "long copy": self.long_copy, "copy of one that quits": self.quitting_owner,
            "copy of one that dies over it": self.dying_owner, "copy of one that hangs": self.hanging_owner,
            "picture": self.picture, "secret": self.secret, "clear": self.clear, "clear from the menu": self.clear_by_menu,
            "pick": self.pick, "menu": self.menu, "window": self.window,
            "settings OK": self.settings_ok, "settings cancel": self.settings_cancel, "info": self.info,
            "start help": self.start_help, "tip": self.person.look_at_tip, "script": self.script,
        }

    def close(self):
        self.copier.close()
        self.reader.close()

    def tenth(self):
        """Everything once through, in the same mixed order each time."""
        steps = [kind for kind, count in TENTH.items() for _ in range(count)]
        random.Random(1).shuffle(steps)
        self.nth = collections.Counter()
        while len(self.entries()) < 6:
            self.copied(self.text(20))  # enough for the menu's digits
        for kind in steps:
            self.kinds[kind]()
            self.nth[kind] += 1
            self.done[kind] += 1
        for text in LAST:
            self.copied(text)
        self.menu()

    # --- what stands in the list

    def entries(self, most=0):
        """The entries in the file of the list, newest first."""
        content = self.file.read_bytes()
        code = "utf-8" if content.startswith(b"\xef\xbb\xbf") else "cp1252"
        parts = SEPARATORS[code].split(content, most and most + 1)
        return [each.decode(code) for each in parts[1:-1]]

    def becomes_newest(self, text):
        try:
            wait_for(f"{text[:40]!r} as newest entry", lambda: self.entries(1) == [text], 10, 0.001)
        except AssertionError as error:
            raise AssertionError(f"{error}; it is {self.entries(1)[0][:40]!r}") from None

    def arrives(self, text):
        """A text that was copied stands in the list, and whoever copied more than an entry holds is told so."""
        self.becomes_newest(text[:LONGEST])
        if len(text) > LONGEST:
            self.person.leave(WARNING, "Return")

    # --- other programs

    def text(self, length):
        self.number += 1
        word = WORDS[self.number % len(WORDS)]
        return (f"{self.number} " + word * (length // len(word) + 1))[:length]

    def copied(self, text):
        self.copier.copy(text)
        self.arrives(text)

    def copy(self):
        self.copied(self.text(LENGTHS[self.nth["copy"] % len(LENGTHS)]))

    def long_copy(self):
        self.copied(self.text(LONG_LENGTHS[self.nth["long copy"] % len(LONG_LENGTHS)]))

    def pasted(self, target="UTF8_STRING"):
        value = self.reader.paste(target)[2]
        return None if value is None else bytes(value).decode()

    def quitting_owner(self):
        """What a program that quits had copied can be pasted still, and is the program's own from then on."""
        text = self.text(LONG_LENGTHS[2] if self.nth["copy of one that quits"] == 0 else 100)
        with Owner(self.name, {"UTF8_STRING": text.encode()}):
            self.arrives(text)
        wait_for("the text of a program that has quit", lambda: self.pasted() == text, 10)

    def dying_owner(self):
        owner = Owner(self.name, {"UTF8_STRING": dies_in_the_middle})
        wait_for("the death of an owner", lambda: not owner.thread.is_alive(), 10, 0.001)
        owner.close()
        self.copied(self.text(50))

    def hanging_owner(self):
        with Owner(self.name, {"TARGETS": silent}) as owner:
            wait_for("a question to the hanging owner", lambda: owner.asked, 10, 0.001)
            self.copied(self.text(50))

    def without_text(self, offers, asked):
        """A program copies what is no text for the list: the list shows an empty clipboard."""
        self.copied(self.text(40))
        with Owner(self.name, offers) as owner:
            wait_for(f"the question for {asked}", lambda: asked in owner.asked, 10, 0.001)
            self.becomes_newest("")

    def picture(self):
        self.without_text({"image/png": bytes(300_000)}, "TARGETS")

    def secret(self):
        self.without_text({"UTF8_STRING": b"not to be kept", SECRET: b"secret"}, SECRET)

    def clear(self):
        text = self.text(40)
        with Owner(self.name, {"UTF8_STRING": text.encode()}) as owner:
            self.arrives(text)
            owner.clear()
            self.becomes_newest("")

    # --- the person

    def clear_by_menu(self):
        self.copied(self.text(40))
        self.person.pick("c")
        self.becomes_newest("")
        # Until the server knows it, a copy would be taken for an older one.
        clipboard = self.person.display.intern_atom("CLIPBOARD")
        wait_for("a clipboard without owner", lambda: not self.person.display.get_selection_owner(clipboard), 10, 0.001)

    def menu(self):
        self.person.leave_menu(self.person.open_menu())

    def pick(self):
        """One of the second to fifth entry; another program pastes it and asks what else there is."""
        at = 1 + self.nth["pick"] % 4
        wanted = self.entries(at + 1)[at]
        self.person.pick(str(at + 1))
        self.becomes_newest(wanted)
        wait_for("the picked text in another program", lambda: self.pasted() == wanted, 10)
        if self.reader.paste("TARGETS")[0] != "ATOM":
            raise AssertionError("no answer about the forms of a text")

    def window(self):
        self.person.walk_pages(self.person.show(MAIN), self.looks)
        self.person.close(MAIN)

    def dialog(self, letter, title, *keys):
        self.person.pick(letter)
        self.person.leave(title, *keys)
        self.person.close(MAIN)

    def settings_ok(self):
        """Turns the third switch, which changes nothing here, and presses OK, the last button but one."""
        settings = self.scene.desktop.folder / "config" / "quillbox" / "user.reg"
        before = settings.read_bytes()
        self.dialog("s", SETTINGS, *["Tab"] * 3, "space", *["Shift_L+Tab"] * 5, "space")
        wait_for("stored settings", lambda: settings.read_bytes() != before, 10)

    def settings_cancel(self):
        self.dialog("s", SETTINGS, *["Control_L+Tab"] * 3, "Escape")

    def info(self):
        self.dialog("i", INFO, "Escape")

    def start_help(self):
        self.dialog("h", HELP, "Return")

    def script(self):
        desktop = self.scene.desktop
        file = desktop.folder / f"typed-{self.done['script']}"
        process = receiver(desktop, os.environ["QUILLBOX_RECEIVER"], file)
        self.person.pick_from_last_submenu()
        wait_for("the script in another program", lambda: file.read_text() == SCRIPT, 10)
        desktop.end(process)
