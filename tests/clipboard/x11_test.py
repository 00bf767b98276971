"""Our side of the X11 clipboard, against owners, readers and strangers that behave well or badly."""
import contextlib
import signal
import struct
import time
import unittest

from Xlib import X, Xatom
from Xlib.protocol import event

from clients import Manager, Owner, Reader, dies_in_the_middle, in_pieces, silent
from desktop import Desktop, wait_for
from sides import BUSY, HINT, LASTS, LATIN, PATIENCE, PLAIN, UTF8, WORD, Rules, Side, secret


class Pieces(Reader):
    def in_whole_characters(self):
        """Some readers convert each piece by itself."""
        for piece in self.pieces:
            piece.decode()


class OneAtATime(Owner):
    """Gives its text whatever it is asked for, and hears no question until all of it has been taken."""

    is_busy = False

    def answer(self, question, target):
        if not self.is_busy:
            super().answer(question, target if target == "TARGETS" else UTF8)

    def begin(self, question, target, parts):
        def until_taken():
            self.is_busy = True
            yield from parts
            self.is_busy = False

        super().begin(question, target, until_taken())


class OnX11(Side, unittest.TestCase):
    """Each test on a server of its own, whose clipboard is empty at first."""

    KIND = "x11"

    def start_server(self):
        self.desktop = Desktop(window_manager=False, panel=False, bus=False)
        self.addCleanup(self.desktop.close)
        return self.desktop.name

    def own(self, offers, kind=Owner):
        owner = kind(self.desktop.name, offers)
        self.addCleanup(owner.close)
        return owner

    def empty(self):
        self.own({UTF8: b"x"}).clear()

    def reader(self):
        reader = Pieces(self.desktop.name)
        self.addCleanup(reader.close)
        return reader

    def owner_id(self):
        owner = self.desktop.display.get_selection_owner(self.desktop.display.intern_atom("CLIPBOARD"))
        return owner and owner.id

    def stays_nobodys(self):
        self.assertEqual(0, self.owner_id())


class RulesOnX11(Rules, OnX11):
    QUESTIONS = ["TARGETS", HINT, UTF8]
    NOWHERE = ":65000"
    PUTS = 100

    @contextlib.contextmanager
    def stopped(self):
        self.desktop.server.send_signal(signal.SIGSTOP)
        try:
            yield
        finally:
            self.desktop.server.send_signal(signal.SIGCONT)

    def offers(self):
        unlisted = {"TARGETS": ("ATOM", 32, Owner.list_of(self.desktop.display.intern_atom, UTF8))}
        return (({"TARGETS": ("ATOM", 32, b""), UTF8: b"lists nothing"}, "lists nothing", LASTS),
                ({UTF8: (UTF8, 8, b"q" * 5_000_003)}, "q" * 5_000_003, LASTS),  # at once, however long it is
                # A mark that isn't in the list; or the word itself, given whatever is asked for.
                *secret({HINT: (LATIN, 8, b"SECRET "), UTF8: WORD, **unlisted}),
                ({HINT: silent, UTF8: b"open", **unlisted}, "open", LASTS),
                ({HINT: [(UTF8, 8, b"secret"), (UTF8, 8, b"")], UTF8: b"open", **unlisted}, "open", LASTS),
                ({HINT: (UTF8, 8, b"secret"), UTF8: b"secret", **unlisted}, "secret", LASTS))

    def bad_offers(self):
        return ({"TARGETS": silent}, None),

    def end_server(self):
        self.desktop.end(self.desktop.server)

    def vanish(self):
        """Another's window does, while the program goes on."""
        super().vanish()
        reader = self.reader()
        reader.ask(UTF8)
        reader.take(PATIENCE, parts=1)
        reader.window.destroy()
        reader.display.sync()

    def test_one_at_a_time(self):
        self.reads("one at a time" * 50_000, {UTF8: b"one at a time" * 50_000}, OneAtATime)


class BadOwners(OnX11):
    def test_lies_about_type_and_format_are_no_text(self):
        """A text target that is answered with anything but text counts for nothing, and the next best is taken."""
        lies = ((UTF8, 32, b"abcdabcd"), ("COMPOUND_TEXT", 8, b"abcd"),
                lambda owner, question: owner.notify(question, question.property),
                [b"good", ("image/png", 8, b"bad"), b""], [b"good", (UTF8, 32, b"bad!"), b""],
                [("INCR", 32, b"\1\1\1\1")], dies_in_the_middle)
        for number, lie in enumerate(lies):
            with self.subTest(number):
                self.reads("", {UTF8: lie})
                self.reads("" if lie is dies_in_the_middle else "honest", {UTF8: lie, LATIN: b"honest"})

    def test_what_is_said_around_a_text(self):
        def announces(size):
            return lambda owner, question: owner.begin(question, UTF8, in_pieces(b"the text", 3), size)

        known = Owner.list_of(self.desktop.display.intern_atom, UTF8)
        unknown = struct.pack("5000I", *range(0x1000000, 0x1001388))
        for offers in (*({UTF8: announces(size)} for size in (b"\xff" * 4, b"\0" * 4, b"", b"x" * 80_000)),
                       # An empty piece is the end, and what is said after it doesn't get into the next text.
                       {UTF8: [b"the text", ("ATOM", 32, b""), b"!", b"!"]},
                       *({UTF8: b"the text", "TARGETS": listed} for listed in (
                           ("STRING", 8, b"not a list"), ("ATOM", 32, unknown + known), ("TARGETS", 32, known)))):
            self.reads("the text", offers)
        # A list too long to be read whole may name the hint of a secret behind its end.
        self.reads("", {UTF8: b"hidden", "TARGETS": ("ATOM", 32, known * 33_000)})
        self.assertEqual("1", self.ask("secret"))


class Owning(OnX11):
    def names(self, value):
        return [self.desktop.display.get_atom_name(atom) if atom else "None" for atom in value]

    def test_every_target_that_it_names(self):
        self.put("Grüße")
        reader, utf8 = self.reader(), "Grüße".encode()
        targets = self.names(reader.paste("TARGETS")[2])
        self.assertEqual(["TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", UTF8, PLAIN, "TEXT", LATIN], targets)
        for target, given in ((UTF8, (UTF8, 8, utf8)), (PLAIN, (PLAIN, 8, utf8)), ("TEXT", (LATIN, 8, b"Gr\xfc\xdfe")),
                              (LATIN, (LATIN, 8, b"Gr\xfc\xdfe")), ("image/png", (None, 0, None)),
                              ("COMPOUND_TEXT", (None, 0, None))):
            self.assertEqual(given, reader.paste(target), target)
        self.assertNotEqual((None, 0, None), reader.paste("SAVE_TARGETS"))
        (since,) = reader.paste("TIMESTAMP")[2]
        self.assertNotEqual(0, since)
        self.assertEqual((None, 0, None), reader.paste(UTF8, time=since - 1000), "from before it was ours")
        # Several in one request.
        atom = reader.display.intern_atom
        for pairs, given in (((UTF8, "A", "image/png", "B", LATIN, "C", "TARGETS", "D"),
                              [UTF8, "A", "image/png", "None", LATIN, "C", "TARGETS", "D"]), ((), [])):
            reader.window.change_property(reader.slot, atom("ATOM_PAIR"), 32, [*map(atom, pairs)])
            self.assertEqual(given, self.names(reader.paste("MULTIPLE")[2]))
        a, c, d = (reader.window.get_full_property(atom(name), X.AnyPropertyType).value for name in "ACD")
        self.assertEqual((utf8, b"Gr\xfc\xdfe", 8), (a, c, len(d)))


class Takeover(OnX11):
    """The clipboard outlives the program that it was copied in."""

    def test_a_text_stays_however_its_owner_quits(self):
        def gone(owner):
            owner.display.sync()
            raise OSError("gone")

        def last_words(text):
            return lambda owner, question: owner.put(question, UTF8, 8, text) or gone(owner)

        def last_piece(owner, question):
            def parts():
                yield from in_pieces(b"in pieces", 4)[:-1]
                owner.write(question.requestor, question.property, UTF8, 8, b"")
                gone(owner)

            owner.begin(question, UTF8, parts())

        large = b"L" * 3_000_000
        for text, offer, goes in ((b"goes", b"goes", lambda owner: owner.window.destroy() or owner.display.flush()),
                                  (b"last words", last_words(b"last words"), None), (b"in pieces", last_piece, None),
                                  (large, last_words(large), None)):
            owner = self.reads(text.decode(), {UTF8: offer, LATIN: b"worse"})
            if goes:
                goes(owner)
            wait_for("the takeover", lambda: self.owner_id() not in (0, owner.window.id), PATIENCE)
            self.stays(text.decode())  # taking over is no news
            self.pastes(text.decode())

    def test_a_new_owner_at_the_same_moment_keeps_the_clipboard(self):
        first = self.reads("first", {UTF8: b"first"})
        first.close()
        self.own({UTF8: b"second"})
        self.news_is("T")
        self.stays("second")
        self.pastes("second")

    def test_the_manager_reads_the_text_before_we_go(self):
        self.assertEqual("0", self.ask("hand-over", 20_000), "nothing is ours")
        self.put("saved")
        self.assertEqual("0", self.ask("hand-over", 20_000), "nobody to take it")
        for answers in True, False:  # one that never says that it has saved is left when the time is up
            manager = Manager(self.desktop.name, answers)
            self.addCleanup(manager.close)
            self.assertEqual(str(int(answers)), self.ask("hand-over", 20_000 if answers else 300))
            self.assertTrue(not answers or (manager.saved, len(manager.targets)) == (b"saved", 4))


class Strangers(OnX11):
    """What others send or destroy without having any part in it."""

    def destroy_ours(self, *others):
        spared = {owner.window.id for owner in others}
        for window in self.desktop.root.query_tree().children:
            if window.id not in spared:
                window.destroy()
        self.desktop.display.sync()
        time.sleep(0.05)

    def test_a_window_that_is_destroyed_is_made_anew(self):
        self.destroy_ours()
        owner = self.reads("after the first", {UTF8: b"after the first"})
        # While a text is under way.
        waits = self.own({"TARGETS": silent, UTF8: b"after the second"})
        wait_for("the question", lambda: waits.asked, PATIENCE)
        del waits.offers["TARGETS"]
        self.destroy_ours(owner, waits)
        wait_for("the text", lambda: self.read() == "after the second", PATIENCE)
        # While the clipboard is ours.
        self.put("ours")
        self.pastes("ours")
        self.destroy_ours(owner, waits)
        self.assertEqual("ours", self.read())
        self.pastes("ours")
        self.ask("news")
        self.reads("after the third", {UTF8: b"after the third"})

    def test_forged_events_leave_the_clipboard_alone(self):
        self.reads("kept", {UTF8: b"kept"})
        self.put("ours")
        self.pastes("ours")
        ours = self.desktop.display.create_resource_object("window", self.owner_id())
        clipboard = self.desktop.display.intern_atom("CLIPBOARD")
        self.desktop.display.set_error_handler(lambda *_: None)  # some are refused
        # As reports that nobody owns it any more, and that it is ours.
        for named in 0, ours.id:
            for kind in range(2, 127):
                forged = event.SelectionClear(time=0, window=ours, atom=0)
                forged._binary = struct.pack("8I", kind, ours.id, named, clipboard, 0, 0, 0, 0)
                ours.send_event(forged)
        self.desktop.display.sync()
        self.stays("ours")
        self.pastes("ours")

    def test_a_flood_of_requests_gives_way(self):
        """Each asks for a long text, and nobody takes any: our own requests have their turn in between."""
        self.put("f" * 60_000)

        def turns_in_a_flood():
            stranger, last, turns = self.reader(), self.reader(), 0
            self.body.process.send_signal(signal.SIGSTOP)
            for _ in range(3000):
                stranger.ask(UTF8)
            last.ask(UTF8)
            self.body.process.send_signal(signal.SIGCONT)
            while not last.display.pending_events():
                self.ask("timers")
                turns += 1
            return turns

        # On a busy machine few of the turns are ours.
        self.assertTrue(any(turns_in_a_flood() > 5 for _ in range(10)))


class WindowManager(Owner):
    """That of a Wayland session, which owns the clipboard on behalf of the windows that aren't X11's."""

    def own(self):
        self.window.set_selection_owner(self.atom("WM_S0"), X.CurrentTime)
        super().own()


class Managed(OnX11):
    def test_what_it_refuses_cannot_be_opened(self):
        refusal = dict.fromkeys(("TARGETS", UTF8, LATIN))
        manager = self.reads(None, refusal, WindowManager)
        self.assertEqual([BUSY, BUSY], [self.ask("put", "text"), self.ask("clear")])
        self.assertEqual(manager.window.id, self.owner_id())
        # It shows the clipboard when one of X11's windows has the focus again, and says nothing of that.
        manager.offers = {UTF8: b"copied meanwhile"}
        self.desktop.root.change_property(
            self.desktop.display.intern_atom("_NET_ACTIVE_WINDOW"), Xatom.WINDOW, 32, [manager.window.id])
        self.desktop.display.sync()
        self.news_is("T")
        self.assertEqual("copied meanwhile", self.read())
        self.put("ours")
        self.pastes("ours")
        # Another owner that refuses can be replaced: it has no say in what we may put.
        self.reads(None, refusal)
        self.put("ours again")
        self.pastes("ours again")

    def test_what_it_gives_up_is_hidden_not_cleared(self):
        for kind, left in ((WindowManager, None), (WindowManager, None), (Owner, "")):
            owner = self.reads("native", {UTF8: b"native"}, kind)
            owner.clear()
            self.news_is("O")
            self.assertEqual(left, self.read())
