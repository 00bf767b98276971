#!/usr/bin/env python3
"""The pictures of the manual and of the README: pictures.py PROGRAM FOLDER"""
import pathlib
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "desktop"))

import themes  # noqa: E402
from desktop import Desktop, wait_for
from screenreader import ScreenReader

TEXTS = ("Dear Anna, thank you for the photos!", "+44 20 7946 0123", "git log --oneline --since=yesterday",
         "Grüße aus Köln", "https://example.org/travel?from=Rome&to=Oslo", "Meeting on Tuesday, 10 o'clock")
COLORS = 48  # more than a window has, so that the files stay small


class Album(Desktop):
    def save(self, name, *source):
        time.sleep(0.4)
        path = self.pictures / f"{name}.png"
        self.run("import", *source, "-strip", "+dither", "-colors", COLORS, "-define", "png:compression-level=9",
                 f"PNG8:{path}")
        print(f"{path.name}: {path.stat().st_size} bytes")

    def picture_of(self, name, title):
        window = wait_for(title, lambda: self.window(title))
        self.xdotool("windowactivate", "--sync", window.id)
        self.save(name, "-window", window.id)

    def area(self, name, left, top, width, height):
        self.save(name, "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "+repage")

    def take(self, folder):
        self.pictures = pathlib.Path(folder)
        self.pictures.mkdir(parents=True, exist_ok=True)
        self.settings()
        themes.choose(self)
        self.run("xsetroot", "-solid", "#6d8a96")
        reader = ScreenReader(self)
        self.start_program()
        for text in TEXTS:
            self.copy(text)
            time.sleep(0.5)
        self.open_menu()
        x, y, _, _ = self.menu()
        self.area("tray-menu", x - 40, y - 10, 1280 - x + 40, 1024 - y + 10)
        self.key("Escape")
        wait_for("the menu's end", lambda: not self.menu())
        left, top, wide, high = self.icons()[0]
        self.hover(left + wide // 2, top + high // 2)
        self.area("tray-tip", 880, 924, 400, 100)
        self.show_window()
        self.picture_of("clip", "Quillbox")
        self.key("ctrl+Tab")
        reader.tab_to("Pad-List")
        self.key("Home", "Down", "Down")
        self.picture_of("pad", "Quillbox")
        self.key("ctrl+Tab")
        reader.tab_to("Display")
        self.key("1", "9", "9", "KP_Multiply", "3", "Return")
        self.picture_of("calc", "Quillbox")
        self.key("ctrl+Tab")
        reader.tab_to("Minutes")
        self.key("ctrl+a", "5")
        reader.tab_to("Message of the timer")
        self.xdotool("type", "--delay", 5, "The tea is ready.")
        self.picture_of("timer", "Quillbox")
        self.key("ctrl+Tab")
        self.picture_of("todo", "Quillbox")
        reader.tab_to("Settings...")
        self.key("space")
        self.picture_of("settings", "Quillbox Settings")
        reader.close()


if __name__ == "__main__":
    Album.program_file = str(pathlib.Path(sys.argv[1]).resolve())
    with Album() as album:
        album.take(sys.argv[2])
