"""What the tests on a desktop have in common: the program's windows, lists and files as a person sees them."""
import contextlib
import subprocess
import time
import unittest

import datafiles
from desktop import Desktop, wait_for
from screenreader import ScreenReader, nodes
from statusnotifier import StatusNotifierHost

PAGES = ("Clip", "Pad", "Calc", "Timer", "ToDo")
SETTINGS, INFO, HELP = "Quillbox Settings", "Quillbox 4.31 Info", "General Starting Information on Quillbox"
MESSAGE = "Quillbox Timer Message"
__unittest = True  # the trace of a failure begins in the test


class DesktopCase(unittest.TestCase):
    """A test with a desktop of its own; `DESKTOP` holds its arguments, `SETTINGS` those of the program."""

    DESKTOP = {}
    SETTINGS = {}
    maxDiff = None

    def setUp(self):
        self.desktop = Desktop(**self.DESKTOP)
        self.addCleanup(self.desktop.close)
        if self.SETTINGS is not None:
            self.desktop.settings(**self.SETTINGS)

    def _callTestMethod(self, method):
        try:
            super()._callTestMethod(method)
        except AssertionError as error:
            with contextlib.suppress(subprocess.SubprocessError):
                error.add_note(f"picture: {self.desktop.picture(f'failed-{self.id()}')}")
            error.add_note(f"quillbox said: {self.desktop.log('quillbox')}")
            raise

    def start_reading(self, page=None):
        """Starts the program with a screen reader beside it; with `page` its window stands open there."""
        self.reader = ScreenReader(self.desktop)
        self.addCleanup(self.reader.close)
        self.desktop.start_program()
        if page:
            self.window = self.to_front(self.desktop.show_window())
            self.turn_to(page)

    def host(self, *names):
        host = StatusNotifierHost(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"], *names)
        self.addCleanup(host.close)
        return host

    def start_with_host(self, host=None):
        """Starts the program beside a panel that shows nothing."""
        host = host or self.host()
        self.desktop.start_program(wait=False)
        wait_for("the icon", lambda: host.items)
        return host

    # --- windows

    def titled(self, title="Quillbox"):
        return wait_for(f"the window {title}", lambda: self.desktop.shown(title))

    def gone(self, title="Quillbox"):
        wait_for(f"the end of {title}", lambda: not self.desktop.shown(title))

    def in_front(self, title="Quillbox"):
        """Waits until the window has the keyboard."""
        return wait_for(f"{title} in front", lambda: (window := self.desktop.shown(title))
                        and self.desktop.active() == window.id and window)

    def to_front(self, window):
        """A person turns to the window."""
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        return window

    def state(self, window, name):
        """Whether the window's state has _NET_WM_STATE_`name`."""
        return self.desktop.atom(f"_NET_WM_STATE_{name}") in self.desktop.property(window, "_NET_WM_STATE")

    def turn_to(self, page):
        """From the first page."""
        self.desktop.key(*["ctrl+Tab"] * PAGES.index(page))

    def count_down(self, seconds):
        self.reader.tab_to("Seconds")
        self.desktop.key("ctrl+a", str(seconds))
        self.reader.tab_to("Activate Countdown")
        self.desktop.key("Return")

    def open_from_menu(self, key):
        self.desktop.open_menu()
        self.menu_goes(key)

    def menu_goes(self, *keys):
        self.desktop.key(*keys)
        wait_for("the menu's end", lambda: not self.desktop.menu())

    def leave(self, title, key="Return"):
        """Waits for a window and leaves it by a key."""
        self.to_front(self.titled(title))
        self.desktop.key(key)
        self.gone(title)

    def find(self, title, **what):
        """Waits for the first thing in a window that is like that, as `role="push button", name="OK"`."""
        return wait_for(what, lambda: next((node for node in nodes(self.reader.window(title))
                                            if all(getattr(node, key) == value for key, value in what.items())), None))

    # --- texts

    def copy(self, *texts):
        for text in texts:
            self.desktop.copy(text)
            self.newest_becomes(text)

    def pastes(self, text):
        """Waits until another program pastes that; None if there is nothing to paste."""
        wait_for(f"{text!r} in another program", lambda: self.desktop.paste() == text)

    def newest_becomes(self, text):
        """Waits until `text` is the newest entry on the disk."""
        wait_for(f"{text[:60]!r} as newest entry", lambda: (self.file("Clip") or [None])[0] == text)

    def next_copy_is_taken(self):
        """A normal copy, as by any program, reaches the list."""
        self.copy(f"normal copy {time.monotonic_ns()}")

    def file(self, name):
        """The entries of a list; None while its file is broken."""
        return datafiles.entries(self.desktop.data / f"{name}Data.qbx")
