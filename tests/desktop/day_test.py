"""A short session as a person would have it, told as it goes on, with pictures: ./run without a display."""
import signal

import datafiles
from case import HELP, PAGES, DesktopCase
from desktop import wait_for

TEXTS = ["Meeting on Tuesday, 10 o'clock", "https://example.org/?a=1&b=2", "Grüße aus Köln", "Καλημέρα κόσμε",
         "two\nlines"]


class ADay(DesktopCase):
    SETTINGS = None
    count = 0

    def picture(self, name):
        self.count += 1
        self.tell(f"  picture {self.desktop.picture(f'day-{self.count:02}-{name}').name}")

    def tell(self, what):
        print(f"  {what}", flush=True)

    def test_from_the_first_start_to_the_end(self):
        self.tell("first start: the icon, the window, and the start help before it")
        self.desktop.start_program()
        order = [self.titled(title).id for title in ("Quillbox", HELP)]
        wait_for("the help in front", lambda: order == [each for each in self.desktop.stacking() if each in order])
        self.picture("first-start")
        for text in TEXTS:
            self.tell(f"another program copies {text!r}")
            self.copy(text)
        self.tell("the mouse rests on the icon: its tip")
        x, y, width, height = self.desktop.icons()[0]
        self.desktop.hover(x + width // 2, y + height // 2)
        self.picture("tip")
        self.tell("a press of the right button on the icon: the menu")
        self.desktop.open_menu()
        self.picture("menu")
        self.tell("key 4: the fourth newest text goes back to the clipboard, and another program pastes it")
        self.desktop.key("4")
        self.pastes(TEXTS[1])
        self.tell("a click on the icon: the window, and its pages")
        self.desktop.click_icon()
        self.in_front()
        for page in PAGES:
            self.picture(f"page-{page}")
            self.desktop.key("ctrl+Tab")
        self.tell("kill -9, as in a power cut, and a new start: nothing is lost")
        before = self.file("Clip")
        self.desktop.stop_program(signal.SIGKILL)
        self.desktop.start_program()
        self.copy("after the power cut")
        self.assertEqual(["after the power cut", *before], self.file("Clip"))
        self.tell("SIGTERM: the lists are written and the program ends")
        self.assertEqual(0, self.desktop.stop_program())
        for path in sorted(self.desktop.data.glob("*.qbx")):
            self.tell(f"== {path.name}, {path.stat().st_size} bytes")
            for line in datafiles.decode(path.read_bytes()).splitlines()[:30]:
                self.tell(line)
