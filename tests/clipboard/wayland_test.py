"""Our side of the Wayland clipboard, against a compositor of the tests' own."""
import itertools
import os
import pathlib
import shutil
import tempfile
import threading
import time
import unittest

from clients import silent
from compositor import EXT, WLR, Compositor, Owner
from desktop import wait_for
from sides import BUSY, GOES, HINT, LASTS, LATIN, MOST, PATIENCE, PLAIN, UTF8, Rules, Side

EUROS = "€".encode() * 100_000


class Reader:
    """Pastes by a pipe of its own; the same as the one of X11."""

    def __init__(self, compositor):
        self.compositor, self.pieces = compositor, []

    def ask(self, target):
        self.pipe = self.compositor.paste(target)

    def take(self, _seconds, parts=None):
        if not self.pipe:
            return None, 0, None
        while len(self.pieces) != parts and (piece := self.pipe.read(65536)):
            self.pieces.append(piece)
        return None, 8, b"".join(self.pieces)

    def close(self):
        if self.pipe:
            self.pipe.close()

    def paste(self, target, seconds):
        self.ask(target)
        taken = self.take(seconds)
        self.close()
        return taken

    def in_whole_characters(self):
        """What one gets that was given up in the middle."""
        self.take(PATIENCE)[2].decode()
        self.close()


class OnWayland(Side, unittest.TestCase):
    KIND = "wayland"
    HOW = {}

    def start_server(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        self.socket = pathlib.Path(folder) / "wayland"
        self.compositor = Compositor(self.socket, **self.HOW)
        self.addCleanup(lambda: self.compositor.close())
        return str(self.socket)

    def own(self, offers):
        return Owner(self.compositor, offers)

    def empty(self):
        self.compositor.select(None)

    def reader(self):
        return Reader(self.compositor)

    def stays_nobodys(self):
        time.sleep(0.1)
        self.assertEqual(("", []), (self.read(), self.compositor.offered()))

    def offered(self):
        return wait_for("our offer", self.compositor.offered, PATIENCE)


class RulesOnWayland(Rules, OnWayland):
    # Several managers: the first one is used.
    HOW = {"managers": (WLR, EXT)}
    QUESTIONS = [UTF8]
    NOWHERE = "/nowhere/at/all"
    PUTS = 3000

    def stopped(self):
        return self.compositor.turn

    def offers(self):
        """Types by other names; those of old clients; an owner that goes while it is asked."""
        def goes(text):
            return lambda owner, fd: (os.write(fd, text), os.close(fd), owner.close())

        return (({PLAIN: "€".encode(), "text/plain": b"worse", LATIN: b"worse"}, "€", LASTS),
                ({"text/plain;charset=UTF-8": b"a", "TEXT": b"worse"}, "a", LASTS),
                ({"text/plain": "漢".encode()}, "漢", LASTS),
                ({PLAIN: None, "TEXT": None}, "", GOES),
                ({PLAIN: goes(b"half")}, "half", LASTS), ({PLAIN: goes(b"")}, "", GOES))

    def bad_offers(self):
        """Without an end, and huge. Of each as much as is kept may be there before the time is up."""
        return ({UTF8: itertools.repeat(EUROS)}, "€" * (MOST // 3)), ({UTF8: [EUROS] * 167}, "€" * (MOST // 3))

    def end_server(self):
        self.compositor.close()

    def test_the_end_waits_for_readers_under_way(self):
        self.put("x" * 1_000_000)
        self.offered()
        reader = self.reader()
        reader.ask(UTF8)
        reader.take(PATIENCE, parts=1)
        threading.Timer(0.2, reader.take, (PATIENCE,)).start()
        self.assertEqual("0", self.ask("hand-over", 20_000))
        self.body.end()
        wait_for("the whole text", lambda: sum(map(len, reader.pieces)) == 1_000_000, PATIENCE)
        reader.close()

    def test_of_a_flood_few_descriptors_are_open(self):
        before = int(self.ask("descriptors"))
        for _ in range(200):
            self.own({UTF8: silent})
            self.assertLess(int(self.ask("descriptors")), before + 40)
        self.own({UTF8: b"last"})
        self.becomes("last")


class OnWlroots(OnWayland):
    HOW = {"managers": (WLR,), "tells_of_nobody": False}

    def test_an_empty_clipboard_of_which_nothing_is_said_is_known(self):
        self.assertEqual("", self.read())
        self.own({UTF8: b"before the start"})
        self.body = self.start()
        self.ask("settle", 20_000)
        self.assertEqual("before the start", self.read())


class Compositors(OnWayland):
    def test_our_mark_in_anothers_offer_is_not_our_offer(self):
        """Another manager offers all that it was offered again."""
        self.put("text")
        self.reads("copied", dict.fromkeys(self.offered(), b"copied")).close()
        self.pastes("copied")

    def test_a_device_that_is_finished_is_made_anew(self):
        self.reads("first", {UTF8: b"first"})
        self.compositor.finish()
        wait_for("its end", lambda: self.read() is None, PATIENCE)
        self.assertEqual(BUSY, self.ask("put", "text"))
        self.becomes("first")
        self.ask("news")
        self.reads("second", {UTF8: b"second"})

    def test_what_is_not_taken_is_not_held(self):
        self.reads("there", {UTF8: b"there"})
        self.compositor.refuses = True
        self.put("refused")
        self.becomes("there")
        self.compositor.close()
        self.compositor = Compositor(self.socket, seat="none")
        wait_for("a connection", lambda: self.compositor.clients, PATIENCE)
        time.sleep(0.2)
        self.assertEqual(BUSY, self.ask("put", "text"))

    def test_a_text_outlives_the_compositor_that_comes_back(self):
        for take in (lambda: self.put("kept"), lambda: self.reads("kept", {UTF8: b"kept"})):
            take()
            time.sleep(0.05)
            self.compositor.close()
            wait_for("the loss", lambda: self.read() is None, PATIENCE)
            time.sleep(0.3)  # it is looked for more than once
            self.compositor = Compositor(self.socket)
            self.pastes("kept")
            self.assertEqual(("kept", "0"), (self.read(), self.ask("lost")[0]))

    def test_one_without_data_control_has_no_clipboard(self):
        self.compositor.close()
        self.compositor = Compositor(self.socket, managers=())
        self.has_no_clipboard(self.name)
