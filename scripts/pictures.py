#!/usr/bin/env python3
"""The pictures of the manual and of the README: pictures.py PROGRAM FOLDER"""
import pathlib
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "desktop"))

import themes  # noqa: E402
from desktop import Desktop, wait_for
from screenreader import ScreenReader

TEXTS = ("Dear Anna, thank you for the photos!", "+44 20 7946 0123", "git log --oneline --since=yesterday",
         "Grüße aus Köln", "https://example.org/travel?from=Rome&to=Oslo", "Meeting on Tuesday, 10 o'clock")
COLORS = 48  # more than a window has, so that the files stay small


class Album:
    def __init__(self, screen, folder):
        self.screen, self.folder = screen, pathlib.Path(folder)
        self.folder.mkdir(parents=True, exist_ok=True)

    def save(self, name, *source):
        time.sleep(0.4)
        path = self.folder / f"{name}.png"
        subprocess.run(["import", *map(str, source), "-strip", "+dither", "-colors", str(COLORS),
                        "-define", "png:compression-level=9", f"PNG8:{path}"], env=self.screen.environment, check=True)
        print(f"{path.name}: {path.stat().st_size} bytes")

    def window(self, name, title):
        window = wait_for(title, lambda: self.screen.window(title))
        self.screen.xdotool("windowactivate", "--sync", window.id)
        self.save(name, "-window", window.id)

    def area(self, name, left, top, width, height):
        self.save(name, "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "+repage")

    def take(self):
        screen = self.screen
        subprocess.run(["xsetroot", "-solid", "#6d8a96"], env=screen.environment, check=True)
        reader = ScreenReader(screen)
        screen.start_program()
        for text in TEXTS:
            screen.copy(text)
            time.sleep(0.5)
        screen.open_menu()
        x, y, width, height = wait_for("the menu", screen.menu)
        self.area("tray-menu", x - 40, y - 10, 1280 - x + 40, 1024 - y + 10)
        screen.key("Escape")
        wait_for("the menu's end", lambda: not screen.menu())
        left, top, wide, high = screen.icons()[0]
        screen.xdotool("mousemove", left + wide // 2 - 3, top + high // 2)
        screen.xdotool("mousemove", left + wide // 2, top + high // 2)
        time.sleep(1)
        self.area("tray-tip", 880, 924, 400, 100)
        screen.show_window()
        self.window("clip", "Quillbox")
        screen.key("ctrl+Tab")
        reader.tab_to("Pad-List")
        screen.key("Home", "Down", "Down")
        self.window("pad", "Quillbox")
        screen.key("ctrl+Tab")
        reader.tab_to("Display")
        screen.key("1", "9", "9", "asterisk", "3", "Return")
        self.window("calc", "Quillbox")
        screen.key("ctrl+Tab")
        reader.tab_to("Minutes")
        screen.key("ctrl+a", "5")
        reader.tab_to("Message of the timer")
        screen.xdotool("type", "--delay", 5, "The tea is ready.")
        self.window("timer", "Quillbox")
        screen.key("ctrl+Tab")
        self.window("todo", "Quillbox")
        reader.tab_to("Settings...")
        screen.key("space")
        self.window("settings", "Quillbox Settings")
        reader.close()


def main(program, folder):
    Desktop.program_file = str(pathlib.Path(program).resolve())
    with Desktop() as screen:
        screen.settings()
        themes.choose(screen)
        Album(screen, folder).take()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
