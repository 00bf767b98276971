#!/usr/bin/env python3
"""Our side of the X11 clipboard alone, against owners, readers and strangers that behave well or badly."""
import os
import signal
import struct
import threading
import time
import unittest

from Xlib import X, Xatom
from Xlib.protocol import event

from body import Body
from clients import Manager, Owner, Reader, dies_in_the_middle, in_pieces, silent
from desktop import Desktop, wait_for

BODY = os.environ.get("QUILLBOX_CLIPBOARD", "")
UTF8, LATIN, PLAIN, HINT = "UTF8_STRING", "STRING", "text/plain;charset=utf-8", "x-kde-passwordManagerHint"
BUSY = "error 521"
PATIENCE = 60  # seconds; what is waited for comes at once on a machine that isn't busy
MOST = 16 * 1024 * 1024  # bytes of a text
LETTERS = b"abcdefghijklmnopqrstuvwxyz" * 11_000
# Characters of one to four bytes, so that any cut by bytes goes through one sooner or later.
LONG = "".join(f"€😀é{number}" for number in range(330_000))


def slowly(parts, seconds):
    for part in parts:
        time.sleep(seconds)
        yield part


def endless(part):
    while True:
        yield part


def whole(text):
    """At once, however long it is."""
    return lambda owner, question: owner.put(question, UTF8, 8, text)


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


class OnX11(unittest.TestCase):
    """Each test on a server of its own, whose clipboard is empty at first."""

    def setUp(self):
        self.desktop = Desktop(window_manager=False, panel=False, bus=False)
        self.addCleanup(self.desktop.close)
        self.body = self.start()
        self.assertEqual("1", self.ask("settle", 20_000))
        self.ask("news")

    def start(self):
        body = Body(BODY, self.desktop.name)
        self.addCleanup(lambda: self.assertEqual(0, body.end()))
        return body

    def ask(self, *request):
        answer, = self.body.ask("\t".join(map(str, request)).encode())
        return answer.decode()

    def read(self):
        """The clipboard's text; None if it can't be opened."""
        answer = self.ask("read")
        return None if answer == BUSY else bytes.fromhex(answer).decode()

    def put(self, text):
        self.assertEqual("", self.ask("put", text.encode().hex()))

    def own(self, offers, kind=Owner):
        owner = kind(self.desktop.name, offers)
        self.addCleanup(owner.close)
        return owner

    def news_is(self, kind):
        self.assertEqual(kind, wait_for("news", lambda: self.ask("news"), PATIENCE))

    def reads(self, text, offers, kind=Owner):
        """Somebody takes the clipboard; what is read then."""
        owner = self.own(offers, kind)
        self.news_is("T" if text else "O")
        self.assertTrue(text == self.read(), (text and text[:40], offers.keys()))
        return owner

    def reader(self):
        reader = Reader(self.desktop.name)
        self.addCleanup(reader.close)
        return reader

    def pastes(self, text):
        """What another program pastes by and by; None if it is refused."""
        wanted = text if text is None else text.encode()
        wait_for(f"{text and text[:40]!r} to be pasted", lambda: self.reader().paste(seconds=PATIENCE)[2] == wanted, PATIENCE)

    def stays(self, text):
        """Nothing comes later."""
        time.sleep(0.05)
        self.assertEqual(text, self.read())
        self.assertEqual("", self.ask("news"))

    def owner_id(self):
        owner = self.desktop.display.get_selection_owner(self.desktop.display.intern_atom("CLIPBOARD"))
        return owner and owner.id


class Reading(OnX11):
    def test_the_best_text_that_is_offered(self):
        for offers, text, *kind in (
                ({LATIN: b"latin", UTF8: "utf-8 €".encode()}, "utf-8 €"),
                ({PLAIN: "pläin".encode()}, "pläin"),
                ({LATIN: b"\xe4\xf6 \xff"}, "äö ÿ"),
                # The better one is offered and then refused; so is the list of an old client.
                ({UTF8: None, LATIN: b"second"}, "second"),
                ({"TARGETS": None, LATIN: b"old client"}, "old client"),
                ({"TARGETS": ("ATOM", 32, b""), UTF8: b"lists nothing"}, "lists nothing"),
                # As it came.
                ({UTF8: b"a\0b\r\nc\rd\n\0"}, "a\0b\r\nc\rd\n\0"),
                ({UTF8: b"bad \xff\xc3 end \xf0\x9f\x98\x80"}, "bad \ufffd\ufffd end 😀"),
                ({UTF8: whole(b"q" * 5_000_003)}, "q" * 5_000_003),
                # In increments, through the middle of a character, too.
                ({UTF8: in_pieces(LETTERS, 5000)}, LETTERS.decode()),
                ({UTF8: in_pieces("x€y".encode(), 1)}, "x€y"),
                # The same again is news again.
                ({UTF8: "x€y".encode()}, "x€y"),
                ({UTF8: b"one at a time" * 50_000}, "one at a time" * 50_000, OneAtATime),
                # What is too long is cut at a whole character.
                ({UTF8: ["€".encode() * 66_000] * 100 + [b""]}, "€" * (MOST // 3)),
                # No text.
                ({"image/png": b"PNG"}, ""), ({UTF8: b""}, ""), ({"none": None}, "")):
            asked = self.reads(text, offers, *kind).asked
            self.assertEqual(LATIN in offers and offers[LATIN].decode("latin-1") == text, LATIN in asked)
            self.assertTrue(text or (UTF8 in offers) == (UTF8 in asked), "nothing is asked for that isn't offered")

    def test_at_the_start_the_owner_that_is_there_is_waited_for(self):
        self.assertEqual("", self.read(), "without an owner it is known at once")
        gate = threading.Event()
        self.own({UTF8: lambda owner, question: gate.wait(60) and owner.put(question, UTF8, 8, b"before")})
        self.body = self.start()
        self.assertEqual((None, "0", None), (self.read(), self.ask("settle", 50), self.read()))
        gate.set()
        self.news_is("T")
        self.assertEqual(("1", "before"), (self.ask("settle", 0), self.read()))

    def test_a_new_owner_ends_the_reading_of_the_old_one(self):
        said = []
        self.own({UTF8: (said.append(1) or b"old " for _ in slowly(endless(1), 0.005))})
        wait_for("some pieces", lambda: len(said) > 3, PATIENCE)
        self.assertIsNone(self.read(), "while a text is under way")
        self.reads("new new new", {UTF8: slowly(in_pieces(b"new new new", 1), 0.007)})
        self.stays("new new new")  # the first one may still be talking

    def test_the_last_of_many_quick_copies(self):
        # One transfer at a time, three requests each; of those that come at once few are begun.
        for pause, asked in ((0.005, 360), (0, 12)):
            owners = []
            self.body.process.send_signal(signal.SIGCONT if pause else signal.SIGSTOP)
            for number in range(120):
                owners.append(self.own({UTF8: b"copy %d of %d" % (number, asked)}))
                time.sleep(pause * (number % 3 > 0))
            self.body.process.send_signal(signal.SIGCONT)
            wait_for("the last copy", lambda: self.read() == f"copy 119 of {asked}", PATIENCE)
            self.assertEqual("0", self.ask("timers"))
            self.assertLessEqual(sum(len(owner.asked) for owner in owners), asked)

    def test_nothing_happens_while_nothing_changes(self):
        owner = self.reads("i" * 5_000_000, {UTF8: whole(b"i" * 5_000_000)})
        before, place = int(self.ask("wake-ups")), self.ask("place")
        for _ in range(4):
            time.sleep(0.1)
            self.assertEqual(place, self.ask("place"), "a tick copies nothing")
        self.assertEqual(before + 6, int(self.ask("wake-ups")), "one for each request of ours")
        self.assertEqual(["TARGETS", HINT, UTF8], owner.asked)

    def test_a_secret_is_no_text(self):
        """Neither taken over nor, when others offer it again without the mark, read; until there is another text."""
        listed, word = {}, "hunter2".encode()
        unlisted = {"TARGETS": ("ATOM", 32, Owner.list_of(self.desktop.display.intern_atom, UTF8))}
        for hint, targets, is_secret, text in (
                (b"secret", listed, True, word), (b"\tSecret\r\n\0", listed, True, word),
                ((LATIN, 8, b"SECRET "), unlisted, True, word), (None, listed, True, word), (silent, listed, True, word),
                (in_pieces(b"secret", 1), listed, True, "päss".encode()), (b"public", listed, False, word),
                (silent, unlisted, False, word), ([(UTF8, 8, b"secret"), (UTF8, 8, b"")], unlisted, False, word),
                ((UTF8, 8, b"secret"), unlisted, False, b"secret")):  # whatever it is asked for
            read = "" if is_secret else text.decode()
            owner = self.reads(read, {UTF8: text, HINT: hint, **targets})
            self.assertEqual(str(int(is_secret)), self.ask("secret"), hint)
            owner.close()
            time.sleep(0.05)
            self.pastes(read or None)
            for again in (read, text), ("other", b"other"), (text.decode(), text):
                self.reads(again[0], {UTF8: again[1]})


class BadOwners(OnX11):
    def test_one_that_does_not_deliver_cannot_be_opened_until_the_next(self):
        # One deadline for all of it, not one a piece.
        for offers in {"TARGETS": silent}, {UTF8: slowly(endless(b"."), 0.1)}:
            self.reads(None, offers)
            self.reads("next", {UTF8: b"next"})

    def test_lies_about_type_and_format_are_no_text(self):
        """A text target that is answered with anything but text counts for nothing, and the next best is taken."""
        lies = [lambda: (UTF8, 16, b"abcdabcd"), lambda: (UTF8, 32, b"abcdabcd"), lambda: ("COMPOUND_TEXT", 8, b"abcd"),
                lambda: ("ATOM", 32, b"abcd"), lambda: lambda owner, question: owner.notify(question, question.property),
                lambda: [b"good", ("image/png", 8, b"bad"), b""], lambda: [b"good", (UTF8, 32, b"bad!"), b""],
                lambda: [("INCR", 32, b"\1\1\1\1")], lambda: dies_in_the_middle]
        for number, lie in enumerate(lies):
            with self.subTest(number):
                self.reads("", {UTF8: lie()})
                self.reads("honest" if number + 1 < len(lies) else "", {UTF8: lie(), LATIN: b"honest"})

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
    def vanish(self):
        """Two readers go away in the middle: one ends, the other's window does."""
        closes, destroys = Reader(self.desktop.name), self.reader()
        for reader in closes, destroys:
            reader.ask(UTF8)
            reader.take(60, parts=1)
        self.assertNotEqual("0", self.ask("timers"))
        closes.close()
        destroys.window.destroy()
        destroys.display.sync()

    def names(self, value):
        return [self.desktop.display.get_atom_name(atom) if atom else "None" for atom in value]

    def test_every_target_that_it_names(self):
        self.put("Grüße")
        self.assertEqual("Grüße", self.read())  # at once
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
        self.assertEqual("", self.ask("news"), "our own change is no news")
        # Several in one request.
        atom = reader.display.intern_atom
        for pairs, given in (((UTF8, "A", "image/png", "B", LATIN, "C", "TARGETS", "D"),
                              [UTF8, "A", "image/png", "None", LATIN, "C", "TARGETS", "D"]), ((), [])):
            reader.window.change_property(reader.slot, atom("ATOM_PAIR"), 32, [*map(atom, pairs)])
            self.assertEqual(given, self.names(reader.paste("MULTIPLE")[2]))
        a, c, d = (reader.window.get_full_property(atom(name), X.AnyPropertyType).value for name in "ACD")
        self.assertEqual((utf8, b"Gr\xfc\xdfe", 8), (a, c, len(d)))
        # What Latin-1 lacks is marked in it.
        self.put("5 € 😀")
        self.assertEqual((LATIN, 8, b"5 ? ?"), reader.paste(LATIN))
        self.assertEqual(UTF8, reader.paste("TEXT")[0])
        self.ask("part", 2)  # of what is read
        self.assertEqual("€", self.read())

    def test_long_texts_in_increments_to_many_at_once(self):
        self.put(LONG)
        reading, stopped = [self.reader() for _ in range(3)], self.reader()
        for reader in (*reading, stopped):
            reader.ask(UTF8)
        stopped.take(60, parts=1)
        self.vanish()
        self.put("short")  # those under way get what they asked for
        for reader in reading:
            self.assertTrue(reader.take(60)[2] == LONG.encode())
            self.assertGreater(len(reader.pieces), 5)
            for piece in reader.pieces:  # some readers convert each by itself
                piece.decode()
        self.pastes("short")
        wait_for("the one that has stopped to be given up", lambda: self.ask("timers") == "0", PATIENCE)

    def test_a_reader_that_vanishes_holds_nothing(self):
        def seconds():
            self.put("v" * 1_000_000)
            self.vanish()
            began = time.monotonic()
            wait_for("no timer", lambda: self.ask("timers") == "0", PATIENCE)
            return time.monotonic() - began

        # One that has stopped is given 5 s. On a busy machine they may pass by themselves, but not each time.
        self.assertTrue(any(seconds() < 4.5 for _ in range(10)))

    def test_the_last_one_to_copy_wins(self):
        self.put("ours")
        self.reads("theirs", {UTF8: b"theirs"})
        self.pastes("theirs")
        for number in range(20):
            self.put(f"ours {number}")
            self.own({UTF8: b"theirs"})  # unseen by us before we put ours, or seen
            self.put(f"ours again {number}")
        time.sleep(0.05)
        self.assertEqual("ours again 19", self.read())
        self.pastes("ours again 19")

    def test_a_clear_of_ours_or_theirs_leaves_nobody(self):
        for clear in (lambda: self.ask("clear"), lambda: self.put(""), lambda: self.own({UTF8: b"x"}).clear()):
            self.put("gone soon")
            self.pastes("gone soon")
            clear()
            wait_for("nobody", lambda: self.owner_id() == 0 and self.read() == "", PATIENCE)
            self.pastes(None)
        self.ask("news")
        self.reads("theirs", {UTF8: b"theirs"})


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
        for text, offer, goes in ((b"closes", b"closes", Owner.close),
                                  (b"destroys", b"destroys", lambda owner: owner.window.destroy() or owner.display.flush()),
                                  (b"last words", last_words(b"last words"), None), (b"in pieces", last_piece, None),
                                  (large, last_words(large), None)):
            owner = self.reads(text.decode(), {UTF8: offer, LATIN: b"worse"})
            if goes:
                goes(owner)
            wait_for("the takeover", lambda: self.owner_id() not in (0, owner.window.id), PATIENCE)
            self.stays(text.decode())  # taking over is no news
            self.pastes(text.decode())

    def test_content_beside_text_is_not_replaced_nor_is_a_clear(self):
        for other in "image/png", "text/uri-list", "x-special/gnome-copied-files", "text/html", "":
            owner = self.reads("beside", {UTF8: b"beside", **({other: b"x"} if other else {})})
            if not other:
                owner.clear()
            owner.close()
            self.news_is("O")
            self.assertEqual("", self.read())
            self.pastes(None)

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


class Server(OnX11):
    def test_its_end_is_reported_once(self):
        self.put("text")
        self.desktop.kill_server()
        wait_for("the loss", lambda: self.ask("lost") == "1 0", PATIENCE)
        time.sleep(0.05)
        self.assertEqual(["1 0", BUSY, BUSY, "0"],
                         [self.ask("lost"), self.ask("read"), self.ask("put", "00"), self.ask("hand-over", 1000)])

    def test_nothing_waits_for_a_stopped_one(self):
        self.desktop.server.send_signal(signal.SIGSTOP)  # whatever waited for it would never end
        self.addCleanup(self.desktop.server.send_signal, signal.SIGCONT)
        for _ in range(100):
            self.put("while it is stopped")
        self.assertEqual("while it is stopped", self.read())
        self.assertEqual("0", self.ask("hand-over", 200))

    def test_without_one_there_is_no_clipboard(self):
        body = Body(BODY, ":65000")
        self.assertEqual((b"error 57\n", 0), (body.process.communicate(timeout=60)[0], body.process.returncode))


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
        self.assertEqual([BUSY, BUSY], [self.ask("put", "00"), self.ask("clear")])
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


if __name__ == "__main__":
    unittest.main()
