"""The clipboard of Wayland sessions, with real clients and real compositors."""
import os
import signal
import time

from kwin import KWin
from sway import Sway

from case import DesktopCase

OWNER = os.environ.get("QUILLBOX_WAYLAND_OWNER", "")
PATIENCE = 30  # seconds; what is waited for comes at once on a machine that isn't busy


class Sessions:
    """What holds under every compositor; the classes below say which."""

    COMPOSITOR = None
    XWAYLAND = False

    def setUp(self):
        self.desktop = self.COMPOSITOR(xwayland=self.XWAYLAND)
        self.addCleanup(self.desktop.close)
        self.desktop.settings()
        self.desktop.start_program()

    def test_copies_picks_and_dead_owners(self):
        self.turn_to_a_native_window()
        for number in range(60):
            self.copy(f"copy {number}")
        self.assertEqual([f"copy {number}" for number in range(59, 9, -1)], self.file("Clip"))
        self.desktop.tray.pick_entry("copy 57")
        self.pastes("copy 57")
        self.newest_becomes("copy 57")
        self.copy("outlives its program")
        self.desktop.end(self.desktop.copier, signal.SIGKILL)
        self.pastes("outlives its program")
        before = self.file("Clip")
        secret = "correct horse battery staple"
        for mark in ("x-kde-passwordManagerHint", "Secret"), ():
            owner = self.desktop.start(OWNER, *mark, "text/plain;charset=utf-8", secret)
            self.newest_becomes("")
            time.sleep(1)  # for what must not come
            self.desktop.end(owner, signal.SIGKILL)
        time.sleep(1)
        self.assertEqual(("", []), (self.desktop.paste(), self.desktop.traces(secret)))
        self.assertEqual(["", *before[:49]], self.file("Clip"))
        self.copy("after the secret")
        self.assertEqual(["after the secret", *before[:49]], self.file("Clip"))

    def turn_to_a_native_window(self):
        """Where the compositor can have one in front without a person."""


class OnSway(Sessions, DesktopCase):
    COMPOSITOR = Sway
    XWAYLAND = True

    def turn_to_a_native_window(self):
        self.desktop.terminal("sleep", "600")


class OnSwayAlone(OnSway):
    XWAYLAND = False

    def test_the_compositor_dies(self):
        self.copy("written at the end")
        (self.desktop.data / "ClipData.qbx").unlink()
        self.desktop.end(self.desktop.compositor, signal.SIGKILL)
        self.desktop.program.wait(PATIENCE)
        self.assertEqual("written at the end", self.file("Clip")[0])


class OnKWin(Sessions, DesktopCase):
    COMPOSITOR = KWin
    XWAYLAND = True


class OnKWinAlone(OnKWin):
    XWAYLAND = False
