"""What a person sees and does on a desktop: windows, icons and menus, keys and mouse, copying and pasting."""
import contextlib
import os
import pathlib
import subprocess
import time

import Xlib.error
from Xlib import XK, X
from Xlib.ext import xtest
from Xlib.protocol import event

PICTURES = pathlib.Path(os.environ.get("QUILLBOX_PICTURES", "pictures"))
HIGHEST_TIP = 150  # pixels
HELD = {"ctrl": "Control_L", "alt": "Alt_L", "shift": "Shift_L"}
RECEIVER = os.environ.get("QUILLBOX_KEY_RECEIVER", "")


def wait_for(what, condition, seconds=60.0, pause=0.01):
    """Waits until `condition()` is true and returns its value; AssertionError after `seconds`."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s in vain: {what}")
        time.sleep(pause)


class Screen:
    """Wants of its heir: `display`, `root`, `environment`, `folder` and `start(program, *arguments)`."""

    last_click = 0.0

    # --- windows

    def atom(self, name):
        return self.display.intern_atom(name)

    def property(self, window, name):
        """The values of a property; none where it is missing, or the window has gone while we looked."""
        try:
            found = window.get_full_property(self.atom(name), X.AnyPropertyType)
        except Xlib.error.BadWindow:
            found = None
        return list(found.value) if found else []

    def windows(self, window=None, depth=0):
        """All windows of the program, each with its attributes, its place on the screen, its depth below the root."""
        window = window or self.root
        try:
            if depth and (window.get_wm_class() or [""])[0] == "quillbox":
                yield window, window.get_attributes(), self.place(window), depth
            for child in window.query_tree().children:
                yield from self.windows(child, depth + 1)
        except (Xlib.error.BadWindow, Xlib.error.BadDrawable):
            pass  # gone while we looked

    def window(self, title, seen=False):
        """The program's window of that title, if `seen` only one that a person sees; None if there is none."""
        return next((window for window, attributes, place, _ in self.windows()
                     if not attributes.override_redirect and place[2] >= 100
                     and bytes(self.property(window, "_NET_WM_NAME")).decode() == title
                     and (not seen or attributes.map_state == X.IsViewable)), None)

    def shown(self, title="Quillbox"):
        return self.window(title, seen=True)

    def active(self):
        """The id of the window that has the keyboard, as the window manager tells it; 0 for none."""
        return next(iter(self.property(self.root, "_NET_ACTIVE_WINDOW")), 0)

    def stacking(self):
        """The ids of all programs' windows, the lowest first, as the window manager tells them."""
        return self.property(self.root, "_NET_CLIENT_LIST_STACKING")

    def place(self, window):
        """Left, top, width and height of a window on the screen, in pixels."""
        geometry = window.get_geometry()
        place = self.root.translate_coords(window, 0, 0)
        return place.x, place.y, geometry.width, geometry.height

    def icons(self):
        """The places of the program's icons in XEmbed trays."""
        return [place for _, attributes, place, depth in self.windows()
                if depth > 1 and place[2] < 100 and attributes.map_state == X.IsViewable]

    def popups(self):
        """The places of menus, submenus and tips: windows that no window manager frames."""
        return [place for _, attributes, place, depth in self.windows()
                if depth == 1 and attributes.override_redirect and attributes.map_state == X.IsViewable]

    def menu(self):
        """The place of the open popup menu, None while there is none."""
        return next((place for place in self.popups() if place[3] > HIGHEST_TIP), None)

    def tip(self):
        """The place of the open tip, None while there is none."""
        return next((place for place in self.popups() if place[3] <= HIGHEST_TIP), None)

    def picture(self, name, window="root"):
        """Saves what the screen, or a window, shows."""
        PICTURES.mkdir(parents=True, exist_ok=True)
        path = PICTURES / f"{name}.png"
        self.run("import", "-window", window, path)
        return path

    def run(self, *command, **how):
        """Another program, to its end."""
        return subprocess.run([*map(str, command)], env=self.environment, **{"check": True, "timeout": 60, **how})

    # --- a person

    def xdotool(self, *arguments):
        self.run("xdotool", *arguments)

    def key(self, *keys):
        """Presses keys one behind the other, as "Tab" or "ctrl+Tab"; each as it is without Shift."""
        for combination in keys:
            names = [HELD.get(name, name) for name in combination.split("+")]
            codes = [self.display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
            for code in codes:
                xtest.fake_input(self.display, X.KeyPress, code)
            for code in reversed(codes):
                xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()

    def click(self, x, y, button=1, times=1):
        self.xdotool("mousemove", x, y, "click", "--repeat", times, "--delay", 60, button)

    def click_icon(self, button=1, times=1):
        # A press within the time of a double click after the one before would make one of both.
        time.sleep(max(0.0, self.last_click + 0.5 - time.monotonic()))
        place = None
        while (before := place) != (place := wait_for("the icon", self.icons)[0]):
            time.sleep(0.2)  # a panel that has just come still moves it
        x, y, width, height = place
        self.click(x + width // 2, y + height // 2, button, times)
        self.last_click = time.monotonic()

    def hover(self, x, y):
        """The mouse comes to rest there, once more if nothing came of it; the place of the tip that shows then."""
        def tip(seconds):
            self.xdotool("mousemove", x + 2, y, "sleep", 0.1, "mousemove", x, y)
            return wait_for("the tip", self.tip, seconds)

        with contextlib.suppress(AssertionError):
            return tip(10)
        return tip(60)

    def menu_has_keyboard(self):
        """A menu takes it a moment after it has come up. Nobody else can then."""
        return self.menu() and self.unmapped.grab_keyboard(
            False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) == X.AlreadyGrabbed

    def open_menu(self):
        self.click_icon(3)
        wait_for("the menu", self.menu_has_keyboard)

    def show_window(self):
        """A click on the icon brings up the main window."""
        self.click_icon()
        return wait_for("the main window", self.shown)

    def close_box(self, window):
        """A click into the close box, as the window manager's decoration tells it."""
        message = event.ClientMessage(window=window, client_type=self.atom("_NET_CLOSE_WINDOW"),
                                      data=(32, [X.CurrentTime, 2, 0, 0, 0]))
        self.root.send_event(message, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.flush()

    def key_receiver(self):
        """Another program that takes the keyboard; the file that holds what was typed into it."""
        typed = self.folder / "typed"
        self.start(RECEIVER, typed)
        wait_for("the receiver", typed.exists, 60)
        return typed

    def copy(self, text):
        """Copies a text in another program (xclip), which serves it in the background."""
        self.run("xclip", "-selection", "clipboard", input=text.encode(), stdout=subprocess.DEVNULL,
                 stderr=subprocess.DEVNULL)

    def paste(self):
        """What another program gets when it pastes; None if it gets nothing."""
        result = self.run("xclip", "-selection", "clipboard", "-out", "-target", "UTF8_STRING", check=False,
                          capture_output=True)
        return result.stdout.decode() if result.returncode == 0 else None
