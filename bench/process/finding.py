"""A person's way to an old entry: the program's key, four letters, Enter, until another program has the text."""
import statistics
import time

from desktop import wait_for
from owners import Owner
from person import Person
from scenes import Scene
from Xlib import X

KEY, LETTERS, TEXT = "Control_L+Alt_L+v", "need", "an old needle"
HAND = 0.08  # seconds between two keys
ENTRIES, OLDER = 100, 5  # entries in all, and below the one that is looked for


class Field:
    """A window of another program that asks for the clipboard's text when it gets Ctrl+V or Shift+Insert."""

    def __init__(self, scene):
        self.scene, self.display = scene, scene.tray.display
        self.window = scene.tray.root.create_window(0, 0, 300, 100, 0, X.CopyFromParent, event_mask=X.KeyPressMask)
        self.window.map()
        self.display.sync()
        wait_for("the field", lambda: self.window.id in scene.desktop.stacking())

    def take_focus(self):
        self.scene.desktop.xdotool("windowactivate", "--sync", self.window.id)
        wait_for("the field's focus", lambda: self.display.get_input_focus().focus == self.window)

    def has_lost_focus(self):
        focus = self.display.get_input_focus().focus
        return focus not in (X.NONE, X.PointerRoot, self.window) and focus.get_wm_class()

    def pasted(self):
        """The next text that is pasted into it, None if none is."""
        keys = [(self.display.keysym_to_keycode(key), held) for key, held in ((0x76, X.ControlMask), (0xFF63, X.ShiftMask))]
        clipboard, utf8 = (self.display.intern_atom(each) for each in ("CLIPBOARD", "UTF8_STRING"))
        for event in self.scene.tray.events(5):
            if event.type == X.KeyPress and (event.detail, event.state & (X.ControlMask | X.ShiftMask)) in keys:
                self.window.convert_selection(clipboard, utf8, utf8, X.CurrentTime)
                self.display.flush()
            elif event.type == X.SelectionNotify and event.property:
                return self.window.get_full_property(utf8, X.AnyPropertyType).value.decode()
        return None


def finding(program, rounds=5):
    """Medians of the seconds from the key to the focus in the program's window, from Enter to the text in the other
    program, and in all; in how many of the rounds it was the right text."""
    with Scene(program) as scene:
        owner = Owner(scene.desktop.name)
        scene.start()
        person, field, taken, right = Person(scene), Field(scene), [], 0
        for _ in range(rounds):
            for number in range(ENTRIES):
                owner.copy(TEXT if number == OLDER else f"entry {number} of {time.monotonic()}")
                time.sleep(0.1)
            scene.settle(2)
            field.take_focus()
            begin = time.monotonic()
            person.key(KEY)
            wait_for("the window", field.has_lost_focus, 5, 0.001)
            opened = time.monotonic() - begin
            for letter in LETTERS:
                time.sleep(HAND)
                person.key(letter)
            time.sleep(HAND)
            enter = time.monotonic()
            person.key("Return")
            right += field.pasted() == TEXT
            taken.append((opened, time.monotonic() - enter, time.monotonic() - begin))
        owner.close()
        return *map(statistics.median, zip(*taken)), right
