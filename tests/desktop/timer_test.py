#!/usr/bin/env python3
"""The timer's message: on top of other programs, without their focus, and with buttons only after a while."""
import os
import shutil
import time
import unittest
import wave

from desktop import PROGRAM, wait_for
from pages_test import Pages
from screenreader import nodes

RECEIVER = os.environ.get("QUILLBOX_KEY_RECEIVER", "")
RECORDER = os.environ.get("QUILLBOX_SOUND_RECORDER", "")
TITLE = "Quillbox Timer Message"
DELAY = 3.0  # seconds until the buttons come


class Timer(Pages):
    def count_down(self, seconds):
        self.start("Timer")
        self.reader.tab_to("Seconds")
        self.desktop.key("ctrl+a", str(seconds))
        self.reader.tab_to("Activate Countdown")
        self.desktop.key("space")

    def message(self):
        window = self.desktop.window(TITLE)
        return window if window and self.desktop.is_viewable(window) else None

    def buttons(self):
        return {node["name"] for node, _ in nodes(self.reader.window(TITLE)) if node["role"] == "push button"}

    def active(self):
        return self.desktop.property(self.desktop.root, "_NET_ACTIVE_WINDOW")[0]

    def other_program(self):
        """A window that covers the screen's middle, has the focus and notes what is typed."""
        typed = self.desktop.folder / "typed"
        self.desktop.start(RECEIVER, "--pings", typed)
        wait_for("the other program", typed.exists)
        return typed

    def message_comes_over(self, typed):
        other = self.active()
        message = wait_for("the message", self.message, 6)
        came = time.monotonic()
        count = 0
        while time.monotonic() < came + DELAY + 1:
            self.desktop.key("Return", "space", "Escape", "x")
            count += 1
            self.assertIsNotNone(self.message(), "a key has closed the message")
            self.assertEqual(other, self.active(), "the message has taken the focus")
            if time.monotonic() < came + DELAY - 0.5:
                self.assertEqual(set(), self.buttons())
        wait_for("all that was typed", lambda: typed.read_text().count("x") == count, 5)
        stacking = list(self.desktop.property(self.desktop.root, "_NET_CLIENT_LIST_STACKING"))
        self.assertGreater(stacking.index(message.id), stacking.index(other))
        wait_for("the buttons", lambda: self.buttons() == {"OK", "Show again in 2 minutes"}, 3)
        self.desktop.xdotool("windowactivate", "--sync", message.id, "key", "Return")
        wait_for("the message's end", lambda: not self.message(), 5)

    def test_over_another_program(self):
        self.count_down(2)
        self.message_comes_over(self.other_program())

    def test_with_the_main_window_hidden(self):
        self.count_down(2)
        self.desktop.key("alt+F4")
        wait_for("the hidden window", lambda: not self.desktop.is_viewable(self.window), 5)
        self.message_comes_over(self.other_program())
        self.assertFalse(self.desktop.is_viewable(self.window))

    def test_keys_for_the_message_before_its_buttons(self):
        self.count_down(1)
        message = wait_for("the message", self.message, 6)
        came = time.monotonic()
        self.desktop.xdotool("windowactivate", "--sync", message.id)
        while time.monotonic() < came + DELAY - 0.7:
            self.desktop.key("Return", "space", "Escape")
            self.assertIsNotNone(self.message(), "a key has closed the message")
        wait_for("the buttons", lambda: self.buttons() == {"OK", "Show again in 2 minutes"}, 5)
        self.desktop.key("Escape")
        wait_for("the message's end", lambda: not self.message(), 5)

    def sound(self, file):
        """Has the message play a file."""
        path = self.desktop.folder / "config" / "quillbox" / "user.reg"
        section = path.read_text("cp1252").split("[")[1].split("]")[0].replace("Intern", "MessageEntry")
        with open(path, "a", encoding="cp1252", newline="") as settings:
            settings.write(f'\r\n[{section}]\r\n"PlayWave"="1"\r\n"WavePath"="{file}"\r\n')

    def test_the_chosen_sound_is_played_once(self):
        # The program with a sound module beside it that notes what it is to play.
        place = self.desktop.folder / "bin"
        place.mkdir()
        self.desktop.program_file = shutil.copy(PROGRAM, place)
        shutil.copy(RECORDER, place)
        tone = self.desktop.folder / "tone.wav"
        with wave.open(str(tone), "wb") as file:
            file.setparams((1, 2, 8000, 0, "NONE", "not compressed"))
            file.writeframes(bytes(1600))
        self.sound(tone)
        self.count_down(1)
        wait_for("the message", self.message, 6)
        wait_for("the sound", (place / "played").exists, 3)
        self.assertEqual(f"{tone}\n", (place / "played").read_text())

    def test_missing_sound_is_silent(self):
        self.sound(self.desktop.folder / "none.wav")
        self.count_down(1)
        wait_for("the message", self.message, 6)
        self.assertEqual("", self.desktop.log("quillbox"))
        self.assertIsNone(self.desktop.program.poll())
        names = [self.desktop.property(self.desktop.display.create_resource_object("window", window), "_NET_WM_NAME")
                 for window in self.desktop.client_list()]
        self.assertEqual({"tint2", "Quillbox", TITLE}, {bytes(name).decode() for name in names})


# The base class's tests are those of another file.
del Pages

if __name__ == "__main__":
    unittest.main()
