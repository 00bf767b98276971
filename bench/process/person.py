"""A person at the program: presses its icon, picks from its menu, goes through its windows.

Every step waits for what it leads to, and is an error without it.
"""
import pathlib
import time

import Xlib.error
from desktop import wait_for
from Xlib import XK, X
from Xlib.ext import xtest

ICON = (104, 118)  # two places on the icon; turns between them make no double click
AWAY = (700, 900)
PAGES = 5
TABS = 40  # pixels from the top of a window, with the names of its pages
AGAIN = 0.25  # seconds after which a key is pressed again: a menu takes the keyboard a moment after it has come up


class Person:
    def __init__(self, scene):
        self.desktop, self.tray, self.display = scene.desktop, scene.tray, scene.tray.display
        self.root = scene.tray.root
        self.presses = 0
        self.list_atom = self.display.intern_atom("_NET_CLIENT_LIST")
        self.name_atom = self.display.intern_atom("_NET_WM_NAME")

    # --- keys and mouse

    def key(self, keys):
        """Keys pressed together, as "Control_L+Tab"."""
        codes = [self.display.keysym_to_keycode(XK.string_to_keysym(each)) for each in keys.split("+")]
        for code in codes:
            xtest.fake_input(self.display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()

    def point(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
        self.display.sync()

    def press_icon(self, button):
        self.tray.window.configure(stack_mode=X.Above)
        self.point(ICON[self.presses % 2], 112)
        self.presses += 1
        xtest.fake_input(self.display, X.ButtonPress, button)
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    # --- popups

    def _popup(self, fits, seconds=5):
        """The next popup whose place fits; None if none comes up."""
        for each in self.tray.events(seconds):
            if each.type == X.MapNotify and each.override:
                try:
                    if fits(each.window.get_geometry()):
                        return each.window
                except Xlib.error.XError:
                    pass  # gone while we looked
        return None

    def _gone(self, window, seconds):
        return any(each.type in (X.UnmapNotify, X.DestroyNotify) and each.window.id == window.id
                   for each in self.tray.events(seconds))

    def forget_events(self):
        for _ in self.tray.events(0):
            pass

    def open_menu(self):
        self.forget_events()
        self.press_icon(3)
        menu = self._popup(lambda place: place.height > 100)
        if not menu:
            raise AssertionError("the menu did not come up")
        return menu

    def leave_menu(self, menu, keys="Escape"):
        for _ in range(20):
            self.key(keys)
            if self._gone(menu, AGAIN):
                return
        raise AssertionError(f"the menu did not go away by {keys}")

    def pick(self, keys):
        self.leave_menu(self.open_menu(), keys)

    def pick_from_last_submenu(self):
        """The first of the Pad entries, which stand in the sixth item from below."""
        menu = self.open_menu()
        time.sleep(AGAIN)
        for _ in range(6):
            self.key("Up")
        self.key("Right")
        if not self._popup(lambda place: place.width < 1000):
            raise AssertionError("the submenu did not come up")
        self.leave_menu(menu, "Return")

    def look_at_tip(self):
        """The mouse rests on the icon until its tip is there, and goes away again."""
        tip = None
        for _ in range(5):  # a hand moves again if nothing comes
            self.tray.window.configure(stack_mode=X.Above)
            for place in (AWAY, (ICON[0], 110), (ICON[0] + 2, 112)):
                self.forget_events()
                self.point(*place)
                time.sleep(0.1)  # steps of a mouse, not one leap
            tip = self._popup(lambda place: place.height < 300, 2)
            if tip:
                break
        if not tip:
            raise AssertionError("the tip did not come up")
        self.point(*AWAY)
        if not self._gone(tip, 5):
            raise AssertionError("the tip did not go away")

    # --- windows

    def _value(self, window, atom):
        found = window.get_full_property(atom, X.AnyPropertyType)
        return found.value if found else None

    def window(self, title):
        """The window of that title on the desktop; None if there is none."""
        for each in self._value(self.root, self.list_atom) or []:
            window = self.display.create_resource_object("window", each)
            try:
                if bytes(self._value(window, self.name_atom) or b"").decode() == title:
                    return window
            except Xlib.error.XError:
                pass  # gone while we looked
        return None

    def in_front(self, title):
        """Waits until the window is there and has the keyboard."""
        def found():
            window = self.window(title)
            return window if window and self.display.get_input_focus().focus == window else None

        return wait_for(f"{title} in front", found, 10, 0.005)

    def is_gone(self, title):
        wait_for(f"the end of {title}", lambda: self.window(title) is None, 10, 0.005)

    def leave(self, title, *keys):
        """Presses the keys that close the window."""
        self.in_front(title)
        for each in keys:
            self.key(each)
        self.is_gone(title)

    def show(self, title):
        self.press_icon(1)
        return self.in_front(title)

    def close(self, title):
        """A press of the window's close box."""
        window = wait_for(title, lambda: self.window(title), 10, 0.005)
        self.desktop.close_box(window)
        self.is_gone(title)

    def tabs(self, window):
        """How the row of the pages' names looks now: every page in front has a look of its own."""
        picture = window.get_image(0, 0, window.get_geometry().width, TABS, X.ZPixmap, 0xFFFFFFFF)
        return picture.data

    def walk_pages(self, window, looks):
        """Through all pages and back to the first; the list `looks` keeps how each looks, from the first walk."""
        first = not looks
        for page in range(PAGES + 1):
            if page > 0:
                self.key("Control_L+Tab")
            if first and page < PAGES:
                wait_for(f"page {page}", lambda: self.tabs(window) not in looks, 10)
                time.sleep(0.2)  # drawn to its end
                looks.append(self.tabs(window))
            else:
                look = looks[page % PAGES]
                wait_for(f"page {page}", lambda: self.tabs(window) == look, 10, 0.005)


def receiver(desktop, program, file):
    """A window of another program that keeps in `file` what is typed into it; has the keyboard when this returns."""
    process = desktop.start(program, file)
    wait_for("the receiver", pathlib.Path(file).exists, 10)
    return process
