#!/usr/bin/env python3
"""A short session on a virtual desktop, as a person would have it: day.py PROGRAM FOLDER

Screenshots go to FOLDER. Prints what it does and what stands in the data files afterwards.
"""
import pathlib
import shutil
import signal
import sys
import time

import datafiles
import desktop
from desktop import Desktop, wait_for

TEXTS = ["Meeting on Tuesday, 10 o'clock", "https://example.org/?a=1&b=2", "Grüße aus Köln", "Καλημέρα κόσμε",
         "two\nlines"]


class Session:
    def __init__(self, screen, folder):
        self.screen, self.folder, self.count = screen, folder, 0

    def tell(self, what):
        print(f"  {what}", flush=True)

    def picture(self, name):
        self.count += 1
        time.sleep(0.4)
        path = self.screen.picture(f"{self.count:02}-{name}", self.folder)
        self.tell(f"    screenshot {path.name}")

    def run(self):
        screen = self.screen
        self.tell("first start: the icon and the start help appear")
        screen.start_program()
        wait_for("the icon", screen.icons, 10)
        wait_for("the start help", lambda: screen.client_list())
        self.picture("first-start")
        self.copy_texts()
        self.look_at_the_tip()
        self.pick_from_the_menu()
        self.open_the_pages()
        self.tell("kill -9, as in a power cut, and a new start: nothing is lost")
        before = datafiles.entries(self.screen.data / "ClipData.qbx")
        screen.stop_program(signal.SIGKILL)
        screen.start_program()
        self.copy("after the power cut")
        assert datafiles.entries(self.screen.data / "ClipData.qbx") == ["after the power cut", *before]
        self.tell("SIGTERM: the lists are written and the program ends")
        code = screen.stop_program()
        assert code == 0, f"exit code {code}"

    def copy_texts(self):
        for text in TEXTS:
            self.tell(f"another program copies {text!r}")
            self.copy(text)

    def copy(self, text):
        self.screen.copy(text)
        wait_for("the text in ClipData.qbx", lambda: datafiles.newest(self.screen) == text)

    def look_at_the_tip(self):
        self.tell("the mouse rests on the icon: its tip")
        x, y, width, height = self.screen.icons()[0]
        self.screen.xdotool("mousemove", x + width // 2 - 3, y + height // 2)
        self.screen.xdotool("mousemove", x + width // 2, y + height // 2)
        time.sleep(1)
        self.picture("tip")

    def pick_from_the_menu(self):
        self.tell("a press of the right button on the icon: the menu")
        self.screen.open_menu()
        self.picture("menu")
        self.tell("key 4: the fourth newest text goes back to the clipboard")
        self.screen.key("4")
        wait_for("the picked text", lambda: self.screen.paste() == TEXTS[1].encode())
        self.tell(f"another program pastes {self.screen.paste().decode()!r}")

    def in_front(self):
        active = self.screen.property(self.screen.root, "_NET_ACTIVE_WINDOW")
        return active[0] if active else 0

    def open_the_pages(self):
        self.tell("a click on the icon: the window")
        self.screen.click_icon(1)
        wait_for("the window in front", lambda: self.in_front() == self.screen.window("Quillbox").id)
        for page in ("clip", "pad", "calc", "timer", "todo"):
            self.tell(f"the page {page}")
            self.picture(f"page-{page}")
            self.screen.key("ctrl+Tab")


def main(program, folder):
    folder = pathlib.Path(folder).resolve()
    shutil.rmtree(folder, ignore_errors=True)
    desktop.PROGRAM = str(pathlib.Path(program).resolve())
    with Desktop() as screen:
        Session(screen, folder).run()
        for name in ("ClipData.qbx", "PadData.qbx", "ToDoData.qbx"):
            path = screen.data / name
            print(f"== {name}, {path.stat().st_size} bytes")
            lines = datafiles.decode(path.read_bytes()).splitlines()
            print("\n".join("  " + line for line in lines[:30]))
            if len(lines) > 30:
                print(f"  ... {len(lines) - 30} more lines")
    print(f"== the screenshots are in {folder}")


if __name__ == "__main__":
    main(*sys.argv[1:])
