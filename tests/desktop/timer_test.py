"""The timer's message: on top of other programs, without their focus, and with buttons only after a while."""
import os
import shutil
import wave

from case import MESSAGE, DesktopCase
from desktop import wait_for
from screenreader import nodes

RECORDER = os.environ.get("QUILLBOX_SOUND_RECORDER", "")


class Timer(DesktopCase):
    def buttons(self):
        return {node.name for node in nodes(self.reader.window(MESSAGE)) if node.role == "push button"}

    def test_over_another_program_with_the_main_window_hidden(self):
        self.start_reading("Timer")
        self.count_down(3)
        self.desktop.key("alt+F4")
        self.gone()
        typed = self.desktop.key_receiver()
        other = self.desktop.active()
        message = self.titled(MESSAGE)
        count = 0
        # From the moment it comes until its buttons are there nothing that is typed reaches it.
        while self.buttons() != {"OK", "Show again in 2 minutes"}:
            self.desktop.key("Return", "space", "Escape", "x")
            count += 1
            self.assertEqual(other, self.desktop.active(), "the message has taken the focus")
        wait_for("all that was typed", lambda: typed.read_text().count("x") == count)
        stacking = self.desktop.stacking()
        self.assertGreater(stacking.index(message.id), stacking.index(other))
        self.leave(MESSAGE, "Escape")

    def test_the_chosen_sound_is_played_once_and_a_missing_one_not(self):
        # The program with a sound module beside it that notes what it is to play.
        place, tone, played = (self.desktop.folder / name for name in ("bin", "tone.wav", "played"))
        place.mkdir()
        self.desktop.environment["PLAYED"] = str(played)
        self.desktop.program_file = shutil.copy(self.desktop.program_file, place)
        shutil.copy(RECORDER, place)
        self.desktop.settings({"PlayWave": 1, "WavePath": tone})
        self.start_reading("Timer")
        for _ in range(2):
            self.count_down(1)
            wait_for("the buttons", self.buttons)
            self.leave(MESSAGE)
            self.to_front(self.window)
            with wave.open(str(tone), "wb") as file:
                file.setparams((1, 2, 8000, 0, "NONE", "not compressed"))
                file.writeframes(bytes(1600))
        self.assertEqual(f"{tone}\n", played.read_text())
        self.assertEqual("", self.desktop.log("quillbox"))
