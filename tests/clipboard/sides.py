"""Our side of the clipboard alone, against owners and readers good and bad: what holds on X11 and on Wayland."""
import itertools
import os
import signal
import threading
import time

from body import Body, escape, unescape
from clients import in_pieces, silent
from desktop import wait_for

BODY = os.environ.get("QUILLBOX_SESSION", "")
UTF8, LATIN, PLAIN, HINT = "UTF8_STRING", "STRING", "text/plain;charset=utf-8", "x-kde-passwordManagerHint"
BUSY = "error 521"
PATIENCE = 60  # seconds; what is waited for comes at once on a machine that isn't busy
MOST = 16 * 1024 * 1024  # bytes of a text
# Characters of one to four bytes, so that any cut by bytes goes through one sooner or later.
LONG = "".join(f"€😀é{number}" for number in range(330_000))
LASTS, GOES, SECRET = "outlives its owner", "goes with its owner", "is no text and goes with its owner"
WORD = b"hunter2"


def slowly(parts, seconds):
    for part in parts:
        time.sleep(seconds)
        yield part


def after(gate, text):
    gate.wait(PATIENCE)
    yield from (text, b"")


def secret(offers, text=WORD):
    """Others may offer it again without the mark: it is known until there is another text."""
    return ((offers, "", SECRET), ({UTF8: text}, "", SECRET), ({UTF8: b"other"}, "other", LASTS),
            ({UTF8: text}, text.decode(), LASTS))


class Side:
    """A clipboard under test, and what others do. Its heirs say how: `start_server()` returns its name, `own(offers)`
    the owner, `reader()` one who pastes; `empty()` is another's clear while the clipboard is ours, and
    `stays_nobodys()` fails if it is taken over then."""

    KIND = ""

    def setUp(self):
        self.name = self.start_server()
        self.body = self.start()
        self.assertEqual("1", self.ask("settle", 20_000))
        self.ask("news")

    def start(self):
        body = Body(BODY, self.KIND, self.name)
        self.addCleanup(lambda: self.assertEqual(0, body.end(), "nothing is left of it"))
        return body

    def has_no_clipboard(self, name):
        body = Body(BODY, self.KIND, name)
        self.assertEqual((b"error 57\n", 0), (body.process.communicate(timeout=PATIENCE)[0], body.process.returncode))

    def ask(self, *request):
        answer, = self.body.ask("\t".join(map(str, request)).encode())
        return answer.decode()

    def read(self):
        """The clipboard's text; None if it can't be opened."""
        answer = self.ask("read")
        return None if answer == BUSY else unescape(answer)

    def put(self, text):
        self.assertEqual("", self.ask("put", escape(text)))

    def news_is(self, kind):
        self.assertEqual(kind, wait_for("news", lambda: self.ask("news"), PATIENCE))

    def becomes(self, text):
        wait_for(f"{text[:40]!r}", lambda: self.read() == text, PATIENCE)

    def reads(self, text, *owner):
        """Somebody takes the clipboard; what is read then."""
        owner = self.own(*owner)
        self.news_is("T" if text else "O")
        self.assertTrue(text == self.read(), (text and text[:40], owner.asked))
        return owner

    def pastes(self, text, target=UTF8):
        """What another program pastes by and by; None if it is refused."""
        wanted = text.encode() if isinstance(text, str) else text
        what = f"{text and text[:40]!r} to be pasted"
        wait_for(what, lambda: self.reader().paste(target, PATIENCE)[2] == wanted, PATIENCE)

    def stays(self, text):
        """Nothing comes later."""
        time.sleep(0.05)
        self.assertTrue(text == self.read())
        self.assertEqual("", self.ask("news"))


class Rules:
    """What holds on both sides, beside `offers()` and `bad_offers()` of each and with a server that is `stopped()`, or
    whose end is `end_server()`."""

    QUESTIONS = []  # what an owner of UTF8 is asked for
    NOWHERE = ""  # the name of no server
    PUTS = 0  # more than a stopped server takes in
    OURS = {UTF8: "ü € 😀".encode(), PLAIN: "ü € 😀".encode(), LATIN: b"\xfc ? ?", "image/png": None}

    def common_offers(self):
        return (
            ({LATIN: b"latin", UTF8: "utf-8 €".encode()}, "utf-8 €", LASTS),
            ({PLAIN: "pläin".encode()}, "pläin", LASTS),
            ({LATIN: b"\xe4\xf6 \xff"}, "äö ÿ", LASTS),
            # The better one is offered and then refused; so is the list of an old client.
            ({UTF8: None, LATIN: b"second"}, "second", LASTS),
            ({"TARGETS": None, LATIN: b"old client"}, "old client", LASTS),
            # As it came.
            ({UTF8: b"a\0b\r\nc\rd\n\0"}, "a\0b\r\nc\rd\n\0", LASTS),
            ({UTF8: b"bad \xff\xc3 end \xf0\x9f\x98\x80"}, "bad \ufffd\ufffd end 😀", LASTS),
            # In increments, through the middle of a character, too.
            ({UTF8: in_pieces("x€y".encode(), 1)}, "x€y", LASTS),
            # The same again is news again.
            ({UTF8: "x€y".encode()}, "x€y", LASTS),
            # What is too long is cut at a whole character.
            ({UTF8: ["€".encode() * 66_000] * 100 + [b""]}, "€" * (MOST // 3), LASTS),
            # No text, or one with what would be lost beside it.
            ({"image/png": b"PNG"}, "", GOES), ({UTF8: b""}, "", GOES), ({"none": None}, "", GOES),
            *(({UTF8: b"beside", other: b"x"}, "beside", GOES)
              for other in ("image/png", "text/uri-list", "x-special/gnome-copied-files", "text/html")),
            # Marks of secrets, if only by their presence.
            *secret({HINT: b"secret", UTF8: WORD}), *secret({HINT: b"\tSecret\r\n\0", UTF8: WORD}),
            *secret({HINT: None, UTF8: WORD}), *secret({HINT: silent, UTF8: WORD}), *secret({HINT: b"", UTF8: WORD}),
            *secret({HINT: in_pieces(b"secret", 1), UTF8: "päss".encode()}, "päss".encode()),
            ({HINT: b"public", UTF8: b"open"}, "open", LASTS),
            ({HINT: b"secret", UTF8: None}, "", SECRET),
            ({HINT: b"secret", UTF8: WORD}, "", SECRET),
            # What is no text forgets it, too.
            ({"image/png": b"PNG"}, "", GOES), ({UTF8: WORD}, WORD.decode(), LASTS))

    def test_what_is_read_and_what_outlives_its_owner(self):
        for offers, text, then in (*self.common_offers(), *self.offers()):
            owner = self.reads(text, offers)
            self.assertEqual(str(int(then == SECRET)), self.ask("secret"), offers)
            # Nothing is asked for that isn't needed, or isn't offered.
            self.assertEqual(text != "" and text == offers.get(LATIN, b"").decode("latin-1"), LATIN in owner.asked)
            self.assertTrue(text or (UTF8 in offers) == (UTF8 in owner.asked))
            owner.close()
            if then == LASTS:
                self.pastes(text)
                self.stays(text)  # taking over is no news
            else:
                wait_for("nobody", lambda: (self.read(), self.ask("secret")) == ("", "0"), PATIENCE)
                self.assertEqual("O" if text else "", self.ask("news"), offers)
                self.pastes(None)

    def test_one_that_does_not_deliver_cannot_be_opened_until_the_next(self):
        # One deadline for all of it, not one a piece.
        for offers, text in (({UTF8: silent}, None), ({UTF8: slowly(itertools.repeat(b"."), 0.1)}, None),
                             ({HINT: silent, UTF8: silent}, ""), *self.bad_offers()):
            self.reads(text, offers)
            self.assertEqual(str(int(HINT in offers)), self.ask("secret"))
            self.reads("next", {UTF8: b"next"})

    def test_at_the_start_the_owner_that_is_there_is_waited_for(self):
        self.assertEqual("", self.read(), "without an owner it is known at once")
        self.body.end()
        gate = threading.Event()
        self.own({UTF8: after(gate, b"before")})
        self.body = self.start()
        self.assertEqual((None, "0", None), (self.read(), self.ask("settle", 50), self.read()))
        gate.set()
        self.news_is("T")
        self.assertEqual(("1", "before"), (self.ask("settle", 0), self.read()))

    def test_what_is_put_back_at_the_start_gives_way_to_a_copy(self):
        for copied, stays in ({}, "back"), ({UTF8: b"a copy"}, "a copy"):
            process = self.body.process
            restore = threading.Thread(target=self.ask, args=("restore", "back"))
            restore.start()
            wait_for("it to stand still", lambda: os.waitpid(process.pid, os.WUNTRACED | os.WNOHANG)[0], PATIENCE)
            if copied:
                self.own(copied)
            process.send_signal(signal.SIGCONT)
            restore.join()
            self.becomes(stays)
            self.pastes(stays)
            self.body.end()
            self.body = self.start()
            self.ask("settle", 20_000)

    def test_a_new_owner_ends_the_reading_of_the_old_one(self):
        said = []
        self.own({UTF8: (said.append(1) or b"old " for _ in slowly(itertools.repeat(1), 0.005))})
        wait_for("some pieces", lambda: len(said) > 3, PATIENCE)
        self.assertIsNone(self.read(), "while a text is under way")
        self.reads("new new new", {UTF8: slowly(in_pieces(b"new new new", 1), 0.007)})
        self.stays("new new new")  # the first one may still be talking

    def test_the_last_of_many_quick_copies(self):
        # One transfer at a time, few requests each; of those that come at once few are begun.
        for pause, asked in ((0.005, 120 * len(self.QUESTIONS)), (0, 12)):
            owners = []
            self.body.process.send_signal(signal.SIGCONT if pause else signal.SIGSTOP)
            for number in range(120):
                owners.append(self.own({UTF8: b"copy %d of %d" % (number, asked)}))
                time.sleep(pause * (number % 3 > 0))
            self.body.process.send_signal(signal.SIGCONT)
            self.becomes(f"copy 119 of {asked}")
            self.assertEqual("0", self.ask("timers"))
            self.assertLessEqual(sum(len(owner.asked) for owner in owners), asked)

    def test_nothing_happens_while_nothing_changes(self):
        owner = self.reads("i" * 5_000_000, {UTF8: b"i" * 5_000_000})
        before, place = int(self.ask("wake-ups")), self.ask("place")
        for _ in range(4):
            time.sleep(0.1)
            self.assertEqual(place, self.ask("place"), "a tick copies nothing")
        self.assertEqual(before + 6, int(self.ask("wake-ups")), "one for each request of ours")
        self.assertEqual(self.QUESTIONS, owner.asked)

    def test_our_own_text_is_served_until_another_copies(self):
        self.put(self.OURS[UTF8].decode())
        self.assertEqual(self.OURS[UTF8].decode(), self.read())  # at once
        for target, given in self.OURS.items():
            self.pastes(given, target)
        self.assertEqual("", self.ask("news"), "our own change is no news")
        self.ask("part", 2)  # of what is read
        self.pastes("€")
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
        for clear in (lambda: self.ask("clear"), lambda: self.put(""), self.empty):
            self.put("gone soon")
            self.pastes("gone soon")
            clear()
            self.becomes("")
            self.pastes(None)
            self.stays_nobodys()
        self.ask("news")
        self.reads("theirs", {UTF8: b"theirs"})

    def test_long_texts_to_many_at_once(self):
        self.put(LONG)
        self.pastes(LONG)
        reading, stopped = [self.reader() for _ in range(3)], self.reader()
        for reader in (*reading, stopped):
            reader.ask(UTF8)
        stopped.take(PATIENCE, parts=1)
        self.vanish()
        self.put("short")  # those under way get what they asked for
        for reader in reading:
            self.assertTrue(reader.take(PATIENCE)[2] == LONG.encode())
            self.assertGreater(len(reader.pieces), 5)
        self.pastes("short")
        wait_for("the one that has stopped to be given up", lambda: self.ask("timers") == "0", PATIENCE)
        for reader in (*reading, stopped):
            reader.in_whole_characters()

    def vanish(self):
        """A reader goes away in the middle."""
        reader = self.reader()
        reader.ask(UTF8)
        reader.take(PATIENCE, parts=1)
        self.assertNotEqual("0", self.ask("timers"))
        reader.close()

    def test_a_reader_that_vanishes_holds_nothing(self):
        def seconds():
            self.put("v" * 1_000_000)
            self.pastes("v" * 1_000_000)
            self.vanish()
            began = time.monotonic()
            wait_for("no timer", lambda: self.ask("timers") == "0", PATIENCE)
            return time.monotonic() - began

        # One that has stopped is given 5 s. On a busy machine they may pass by themselves, but not each time.
        self.assertTrue(any(seconds() < 4.5 for _ in range(10)))

    def test_nothing_waits_for_a_stopped_server(self):
        with self.stopped():  # whatever waited for it would never end
            for number in range(self.PUTS):
                if number % 7 == 3:
                    self.ask("clear")
                self.put(f"while it is stopped {number}")
            self.assertEqual(f"while it is stopped {number}", self.read())
            self.assertEqual("0", self.ask("hand-over", 200))
        self.pastes(f"while it is stopped {number}")
        self.stays(f"while it is stopped {number}")

    def test_the_end_of_the_server_is_reported_once(self):
        self.put("text")
        self.end_server()
        wait_for("the loss", lambda: self.ask("lost") == "1 0", PATIENCE)
        time.sleep(0.5)
        self.assertEqual(["1 0", BUSY, BUSY, BUSY, "0"], [self.ask("lost"), self.ask("read"), self.ask("put", "text"),
                                                          self.ask("clear"), self.ask("hand-over", 1000)])

    def test_without_a_server_there_is_no_clipboard(self):
        self.has_no_clipboard(self.NOWHERE)
