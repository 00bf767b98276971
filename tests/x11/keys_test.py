"""Scripts and the one key on X11, with layouts, programs and persons that do as they like meanwhile."""
import contextlib
import os
import signal
import threading
import time
import unittest

from Xlib import X
from Xlib.ext import xtest

from body import Body, escape
from desktop import Desktop, wait_for
from x11.receiver import KEYS, PATIENCE, Receiver, mixed_text, quoted

BODY = os.environ.get("QUILLBOX_SESSION", "")
CAPS, NUM = 2, 16  # real modifiers
SHIFT, CONTROL, ALT, SUPER, MENU, PAUSE, F12, ONE, Y, Z, V = 50, 37, 64, 133, 135, 127, 96, 10, 29, 52, 55  # key codes
SWITCHES = "grp:menu_toggle"
LOCK_KEYS = {CAPS: 66, NUM: 77}
FAILED = "error 57"
BOUND, TAKEN, NO_SUCH_KEY, IMPOSSIBLE = "1356"  # as in KeyBinding


class KeysCase(unittest.TestCase):
    """A person at a keyboard, and a program of ours."""

    LAYOUTS = "us"

    def setUp(self):
        self.desktop = Desktop(window_manager=False, panel=False, bus=False)
        self.addCleanup(self.desktop.close)
        self.use_layouts(self.LAYOUTS)
        self.body = self.start()

    def start(self):
        body = Body(BODY, "keys", self.desktop.name)
        self.addCleanup(lambda: self.assertIn(body.end(), (0, -signal.SIGKILL), "nothing is left of it"))
        return body

    def ask(self, verb, argument=""):
        answer, = self.body.ask(f"{verb}\t{argument}".encode())
        return answer.decode()

    def send(self, keys, verb="send"):
        return self.ask(verb, escape(keys))

    @contextlib.contextmanager
    def sending(self, keys):
        """Sends while the block runs; yields the list that the answer comes into."""
        answers = []
        thread = threading.Thread(target=lambda: answers.append(self.send(keys)))
        thread.start()
        yield answers
        thread.join()

    def receiver(self, *how):
        return Receiver(self.desktop, *how)

    # --- the person

    def use_layouts(self, layouts):
        self.desktop.run("setxkbmap", "-model", "pc105", "-layout", layouts, "-option", "", "-option", SWITCHES)

    def use_group(self, group):
        if self.state()[1] != group:
            self.key(MENU)

    def use_locks(self, modifiers):
        for lock, code in LOCK_KEYS.items():
            if (self.state()[0] ^ modifiers) & lock:
                self.key(code)

    def hold(self, *codes, down=True):
        for code in codes:
            xtest.fake_input(self.desktop.display, X.KeyPress if down else X.KeyRelease, code)
        self.desktop.display.sync()

    def key(self, *codes):
        self.hold(*codes)
        self.hold(*codes, down=False)

    def focus(self, window):
        self.desktop.display.set_input_focus(window, X.RevertToNone, X.CurrentTime)
        self.desktop.display.sync()

    def set(self, window, name, kind, value):
        """A property."""
        window.change_property(self.desktop.atom(name), self.desktop.atom(kind), 32, [value])
        self.desktop.display.sync()

    def state(self):
        """Locks, group, keys that are down, and what a sender has left at the root window."""
        state = self.desktop.root.query_pointer().mask
        keys = self.desktop.display.query_keymap()
        marks = map(self.desktop.display.get_atom_name, self.desktop.root.list_properties())
        return (state & (CAPS | NUM), state >> 13 & 3, [code for code in range(256) if keys[code // 8] >> code % 8 & 1],
                [mark for mark in marks if "QUILLBOX" in mark])

    def map(self):
        """The whole map as text: symbols, types, modifiers, actions."""
        return self.desktop.run("xkbcomp", "-w0", self.desktop.name, "-", capture_output=True).stdout


class Texts(KeysCase):
    def test_a_long_text_arrives_whole_and_the_keyboard_stays_as_it_was(self):
        # More characters than there are spare keys.
        text = mixed_text(40) + "".join(chr(0x4E00 + number) + "-" for number in range(400))
        for layouts, group, locks, how in (
                ("us", 0, 0, "mute"), ("us", 0, 0, "slow"), ("us", 0, CAPS | NUM, ""), ("de", 0, CAPS | NUM, "mute"),
                ("fr", 0, 0, ""), ("us,gr", 1, 0, ""), ("us,gr", 1, CAPS | NUM, "")):
            with self.subTest(layouts=layouts, group=group, locks=locks, how=how):
                self.use_layouts(layouts)
                self.use_group(group)
                self.use_locks(locks)
                receiver, before = self.receiver(how), self.map()
                self.assertEqual("", self.send(quoted(text)))
                receiver.gets(text)
                self.assertIsNotNone(receiver.presses())
                self.assertEqual((locks, group, [], []), self.state())
                self.assertTrue(before == self.map())

    def test_spare_keys_stay_until_the_program_has_looked_them_up(self):
        for how in (), ("qt",), ("child",):
            receiver = self.receiver("late", *how)
            self.send("漢é😀")
            self.assertEqual("漢é😀", receiver.text(), "taken in, that is")

    def test_a_keyboard_that_is_used_meanwhile(self):
        """What stands in the window is right, or the script fails and that is its beginning, but for the last sign."""
        def hold_shift():
            self.hold(SHIFT)
            time.sleep(0.1)
            self.hold(SHIFT, down=False)

        text = mixed_text(30) + "y" * 4000
        for disturb in (hold_shift, lambda: self.use_group(1), lambda: self.use_locks(CAPS),
                        lambda: self.use_layouts("de")):
            self.use_layouts("us,gr")
            self.use_group(0)
            receiver = self.receiver()
            with self.sending(quoted(text)) as answers:
                wait_for("the beginning", lambda: len(receiver.text()) > 1000, PATIENCE)
                disturb()
            if answers == [""]:
                receiver.gets(text)
            else:
                self.assertEqual([FAILED], answers)
                time.sleep(0.1)
                self.assertTrue(text.startswith(receiver.text()[:-2]))


class Keys(KeysCase):
    def test_modifiers_repeats_and_special_keys(self):
        receiver = self.receiver()
        wanted, pressed = [], 0
        for keys, names, modifiers in KEYS:
            self.send(keys)
            wanted.append(names)
            pressed += modifiers
            wait_for(keys, lambda: receiver.presses() == (" ".join(wanted), pressed), PATIENCE)

    def test_caps_lock_of_the_string_outlasts_it(self):
        receiver = self.receiver()
        for keys, locked in ("a{CAPSLOCK}", CAPS), ("b{CAPSLOCK}", 0):
            self.send(keys)
            self.assertEqual(locked, self.state()[0])
        receiver.gets("ab")

    def test_a_modifier_that_is_held_is_waited_for(self):
        receiver = self.receiver()
        self.hold(SHIFT)
        with self.sending("abc é") as answers:
            time.sleep(0.3)
            self.hold(SHIFT, down=False)
        # Another key that stays down does no harm; a modifier is a failure.
        self.hold(PAUSE)
        answers.append(self.send("d"))
        self.hold(SHIFT)
        answers.append(self.send("e"))
        self.assertEqual(["", "", FAILED], answers)
        receiver.gets("abc éd")

    def test_a_bad_string_types_nothing_nor_does_one_from_within_a_string(self):
        receiver = self.receiver()
        self.assertEqual("error 5", self.send("abc\uffff"))
        said = self.body.ask(b"send\tabc", b"send\tx")
        self.assertEqual([b"error 70", b""], said)
        receiver.gets("abc")


class Focus(KeysCase):
    def test_without_a_window_of_another_program_the_script_fails(self):
        """Ours are known by their process."""
        other, ours = self.receiver(), self.receiver("child")
        self.set(ours.window, "_NET_WM_PID", "CARDINAL", self.body.process.pid)
        other.window.warp_pointer(5, 5)
        for focus in ours.focused, X.NONE, X.PointerRoot:
            self.focus(focus)
            self.assertEqual(FAILED, self.send("a{CAPSLOCK}"))
            self.assertEqual(0, self.state()[0])
        # The one that gets the focus from us gets the keys.
        self.focus(ours.focused)
        with self.sending("abc") as answers:
            time.sleep(0.1)
            self.focus(other.window)
        self.assertEqual([""], answers)
        other.gets("abc")
        ours.gets("")

    def test_keys_may_depend_on_the_class_of_the_window(self):
        receiver = self.receiver("child")
        receiver.window.set_wm_class("instance", "XTerm")
        self.desktop.display.sync()
        self.assertEqual(["XTerm", "XTerm"], [self.send(keys, "send-to") for keys in ("v", "")])
        receiver.gets("v")

    def test_under_a_window_manager_only_programs_are_typed_into(self):
        """It marks their windows. Where it parks the focus when no program has it isn't one."""
        manager, receiver = self.receiver(), self.receiver("child")
        for window in self.desktop.root, manager.window:
            self.set(window, "_NET_SUPPORTING_WM_CHECK", "WINDOW", manager.window.id)
        self.assertEqual(FAILED, self.send("a{CAPSLOCK}"))
        self.assertEqual(0, self.state()[0])
        self.set(receiver.window, "WM_STATE", "WM_STATE", 1)
        self.assertEqual("", self.send("é1"))
        # It has left its traces, and windows are windows again.
        self.desktop.end(manager.process)
        unmarked = self.receiver()
        self.assertEqual("", self.send("2"))
        receiver.gets("é1")
        unmarked.gets("2")


class Recovery(KeysCase):
    LAYOUTS = "de"

    def type_and_die(self):
        """Ends in the middle of a script, whatever it has done to the keyboard."""
        receiver = self.receiver()
        keys = "+({é 32767}{漢 32767}{a 32767}{é 32767}{漢 32767})"
        self.body.process.stdin.write(b"send\t" + keys.encode() + b"\n")
        self.body.process.stdin.flush()
        wait_for("the first key", receiver.text, PATIENCE)
        self.body.process.kill()
        self.body.process.wait()
        self.body = self.start()

    def test_after_a_kill_the_next_start_puts_the_keyboard_right(self):
        self.use_locks(CAPS | NUM)
        before = self.map()
        self.type_and_die()
        locked, _, down, marks = self.state()
        self.assertEqual((NUM, True, 2), (locked, SHIFT in down, len(marks)))
        self.assertFalse(before == self.map())
        self.ask("recover")
        self.assertEqual((CAPS | NUM, 0, [], []), self.state())
        self.assertTrue(before == self.map())

    def test_a_layout_that_was_set_meanwhile_is_left_alone(self):
        self.type_and_die()
        self.use_layouts("fr")
        before = self.map()
        self.ask("recover")
        self.assertTrue(before == self.map())

    def test_a_failure_on_the_way_leaves_nothing_behind(self):
        self.use_locks(CAPS)
        before = self.map()
        self.receiver()
        for pauses in 1, 2, 5, 10:  # until the program's own events fail
            self.ask("fail", pauses)
            self.assertEqual("failed", self.send("+({é 32767})"))
            self.assertEqual((CAPS, 0, [], []), self.state())
            self.assertTrue(before == self.map())


class OneKey(KeysCase):
    LAYOUTS = "us,gr"

    def bind(self, key):
        return self.send(key, "bind")

    def tells(self, *codes):
        """Of one press of these, held one after the other."""
        self.assertEqual("", self.ask("heard"))
        self.key(*codes)
        wait_for("the press", lambda: self.ask("heard") == "P", PATIENCE)

    def comes_to_tell(self, *codes):
        def told():
            self.key(*codes)
            time.sleep(0.05)
            return self.ask("heard") + self.ask("heard")  # what had come by the first request is told by the second

        wait_for("a press", told, PATIENCE)

    def tells_not(self, *codes):
        self.key(*codes)
        time.sleep(0.05)
        self.assertEqual("", self.ask("heard"))

    def test_one_press_is_told_once_whatever_is_locked(self):
        for key, codes in (("Ctrl+Alt+V", (CONTROL, ALT, V)), ("Ctrl+Shift+!", (CONTROL, SHIFT, ONE)),
                           ("Meta+F12", (SUPER, F12)), ("Pause", (PAUSE,))):
            self.assertEqual(BOUND, self.bind(key))
            for locks in 0, CAPS, NUM, CAPS | NUM:
                self.use_locks(locks)
                self.tells(*codes)
        self.hold(PAUSE)
        time.sleep(1.5)  # it repeats itself
        self.hold(PAUSE, down=False)
        self.assertEqual("P", self.ask("heard"))
        self.tells_not(CONTROL, ALT, V)  # the one of before
        self.ask("release")
        receiver = self.receiver()
        self.tells_not(PAUSE)
        wait_for("others to have it again", lambda: receiver.presses() == ("Pause", 0), PATIENCE)

    def test_a_key_of_another_program_is_not_taken_and_is_free_after_its_end(self):
        other = self.start()
        self.assertEqual([BOUND.encode()], other.ask(b"bind\tCtrl+Y"))
        self.assertEqual([TAKEN, BOUND], [self.bind("Ctrl+Y"), self.bind("Ctrl+V")])
        other.end()
        self.assertEqual(BOUND, self.bind("Ctrl+Y"))
        self.tells(CONTROL, Y)

    def test_the_key_is_where_the_layout_in_use_has_it(self):
        self.assertEqual([NO_SUCH_KEY, BOUND], [self.bind("Ctrl+Ö"), self.bind("Ctrl+Y")])
        self.use_group(1)
        self.tells(CONTROL, Y)  # the Greek layout has no y
        self.use_layouts("de")
        self.comes_to_tell(CONTROL, Z)
        self.tells_not(CONTROL, Y)
        self.use_layouts("us,de")
        self.use_group(0)
        self.comes_to_tell(CONTROL, Y)
        self.use_group(1)
        self.comes_to_tell(CONTROL, Z)
        self.assertEqual(BOUND, self.bind("Ctrl+Ö"))
        self.use_layouts("us")
        wait_for("its loss", lambda: self.ask("heard") == NO_SUCH_KEY, PATIENCE)

    def test_without_a_server_nothing_is_bound_or_sent(self):
        self.body = Body(BODY, "keys", ":65000")
        self.addCleanup(self.body.end)
        self.assertEqual([IMPOSSIBLE, FAILED], [self.bind("Ctrl+Y"), self.send("a")])
