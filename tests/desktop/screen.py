"""What a person sees and does on a desktop: windows, icons and menus, keys and mouse, copying and pasting."""
import os
import pathlib
import subprocess
import time

import Xlib.display
import Xlib.error
from Xlib.protocol import event

PICTURES = pathlib.Path(os.environ.get("QUILLBOX_PICTURES", "pictures"))
RECEIVER = os.environ.get("QUILLBOX_KEY_RECEIVER", "")


def wait_for(what, condition, seconds=15.0, pause=0.01):
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

    def property(self, window, name):
        found = window.get_full_property(self.display.intern_atom(name), Xlib.X.AnyPropertyType)
        return found.value if found else None

    def client_list(self):
        value = self.property(self.root, "_NET_CLIENT_LIST")
        return list(value) if value is not None else []

    def windows(self):
        """All windows of the program, each with its attributes and its geometry on the screen."""
        found = []

        def walk(window, x, y, depth, shown):
            try:
                attributes = window.get_attributes()
                geometry = window.get_geometry()
                shown = shown and attributes.map_state == Xlib.X.IsViewable
                x, y = x + geometry.x + geometry.border_width, y + geometry.y + geometry.border_width
                name = window.get_wm_class() if depth else None
                if name and name[0] == "quillbox":
                    found.append((window, attributes, (x, y, geometry.width, geometry.height), depth))
                for child in window.query_tree().children:
                    walk(child, x, y, depth + 1, shown)
            except (Xlib.error.BadWindow, Xlib.error.BadDrawable):
                pass  # gone while we looked

        walk(self.root, 0, 0, 0, True)
        return found

    def window(self, title):
        """The program's window of that title, shown or not; None if there is none."""
        for window, attributes, geometry, _ in self.windows():
            if attributes.override_redirect or geometry[2] < 100:
                continue
            if self.title(window) == title:
                return window
        return None

    def shown(self, title="Quillbox"):
        """The same, if a person can see it."""
        window = self.window(title)
        return window if window and self.is_viewable(window) else None

    def title(self, window):
        """None for a window without one, or that has gone while we looked."""
        try:
            name = self.property(window, "_NET_WM_NAME")
        except Xlib.error.BadWindow:
            return None
        return None if name is None else bytes(name).decode()

    def message(self):
        """The title of an open message box, None while there is none."""
        dialog = self.display.intern_atom("_NET_WM_WINDOW_TYPE_DIALOG")
        for window, attributes, _, _ in self.windows():
            if attributes.map_state == Xlib.X.IsViewable and dialog in list(
                    self.property(window, "_NET_WM_WINDOW_TYPE") or []):
                return bytes(self.property(window, "_NET_WM_NAME")).decode()
        return None

    def is_viewable(self, window):
        try:
            return window.get_attributes().map_state == Xlib.X.IsViewable
        except Xlib.error.BadWindow:
            return False

    def place(self, window):
        """Left, top, width and height of a window on the screen, in pixels."""
        geometry = window.get_geometry()
        place = window.translate_coords(self.root, 0, 0)
        return -place.x, -place.y, geometry.width, geometry.height

    def icons(self):
        """The places of the program's icons in XEmbed trays."""
        return [
            geometry for window, attributes, geometry, depth in self.windows()
            if depth > 1 and geometry[2] < 100 and attributes.map_state == Xlib.X.IsViewable
        ]

    def popups(self):
        """The places of menus and tips: windows that no window manager frames."""
        return [geometry for _, attributes, geometry, depth in self.windows()
                if depth == 1 and attributes.override_redirect and attributes.map_state == Xlib.X.IsViewable]

    def menu(self):
        """The place of the open popup menu, None while there is none. A tip is never as high."""
        return next((place for place in self.popups() if place[3] > 150), None)

    def menus(self):
        """How many popups are open: a menu and its submenus."""
        return len(self.popups())

    def tip(self):
        """The place of the open tip, None while there is none."""
        return next((place for place in self.popups() if place[3] <= 150), None)

    def picture(self, name, folder=None):
        """Saves what the screen shows."""
        folder = pathlib.Path(folder or PICTURES)
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / f"{name}.png"
        subprocess.run(["import", "-window", "root", str(path)], env=self.environment, check=True,
                       stdin=subprocess.DEVNULL)
        return path

    # --- a person

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, check=True, timeout=20,
                       stdin=subprocess.DEVNULL)

    def click(self, x, y, button=1, times=1):
        arguments = ["mousemove", x, y]
        arguments += ["click", "--repeat", times, "--delay", 60, button] if times > 1 else ["click", button]
        self.xdotool(*arguments)

    def click_icon(self, button=1, times=1):
        x, y, width, height = wait_for("the icon", self.icons)[0]
        # A press within the time of a double click after the one before would make one of both.
        time.sleep(max(0.0, self.last_click + 0.5 - time.monotonic()))
        self.click(x + width // 2, y + height // 2, button, times)
        self.last_click = time.monotonic()

    def key(self, *keys):
        if keys:
            self.xdotool("key", *keys)

    def type(self, text):
        for line in text.splitlines(keepends=True):
            self.xdotool("type", "--delay", 5, line.rstrip("\n"))
            self.key(*["Return"] * line.endswith("\n"))

    def open_menu(self):
        self.click_icon(3)
        return wait_for("the menu", self.menu)

    def show_window(self):
        """A click on the icon brings up the main window."""
        if not self.shown():
            self.click_icon(1)
        return wait_for("the main window", self.shown)

    def close_box(self, window):
        """A click into the close box, as the window manager's decoration tells it."""
        message = event.ClientMessage(window=window, client_type=self.display.intern_atom("_NET_CLOSE_WINDOW"),
                                      data=(32, [Xlib.X.CurrentTime, 2, 0, 0, 0]))
        self.root.send_event(message, Xlib.X.SubstructureRedirectMask | Xlib.X.SubstructureNotifyMask)
        self.display.flush()

    def other_window(self):
        """A window of another program that covers everything and has the keyboard."""
        window = self.root.create_window(0, 0, 1200, 900, 0, Xlib.X.CopyFromParent, background_pixel=0x445566)
        window.set_wm_name("other")
        window.map()
        self.display.sync()
        wait_for("the other program", lambda: window.id in self.client_list())
        self.xdotool("windowactivate", "--sync", window.id)
        return window

    def key_receiver(self):
        """Another program that takes the keyboard; the file that holds what was typed into it."""
        typed = self.folder / "typed"
        self.start(RECEIVER, typed)
        wait_for("the receiver", typed.exists)
        return typed

    def copy(self, text):
        """Copies a text in another program (xclip), which serves it in the background."""
        data = text if isinstance(text, bytes) else text.encode()
        command = ["xclip", "-selection", "clipboard", "-in"]
        with open(self.folder / "xclip.log", "ab") as log:
            subprocess.run(command, input=data, env=self.environment, check=True, timeout=10, stdout=log, stderr=log)

    def paste(self, target="UTF8_STRING", seconds=10):
        """What another program gets when it pastes, as bytes; None if it gets nothing."""
        result = subprocess.run(["xclip", "-selection", "clipboard", "-out", "-target", target],
                                env=self.environment, capture_output=True, timeout=seconds)
        return result.stdout if result.returncode == 0 else None
