"""Clients of the clipboard: owners that behave well or badly, and readers. Each has a connection of its own."""
import os
import select
import threading
import time

import Xlib.display
import Xlib.error
from Xlib import X, Xatom
from Xlib.protocol import event, request

CHUNK = 200_000  # bytes


class Owner:
    """Owns a selection, CLIPBOARD unless told otherwise, and serves `offers`, target name -> bytes. Subclasses misbehave."""

    def __init__(self, name, offers, selection="CLIPBOARD"):
        self.display_name, self.selection = name, selection
        self.display = Xlib.display.Display(name)
        self.display.set_error_handler(lambda *_: None)
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.window.change_attributes(event_mask=X.PropertyChangeMask)
        self.offers = dict(offers)
        self.transfers = {}  # (requestor's id, property) -> iterator over the parts
        self.asked = []  # names of the targets that were asked for
        self.lost = threading.Event()
        self.cleared = threading.Event()
        self.served = threading.Event()  # a text has been handed over as a whole
        self.stop_read, self.stop_write = os.pipe()
        self.thread = threading.Thread(target=self._run, daemon=True)
        self.own()
        self.thread.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def atom(self, name):
        return self.display.intern_atom(name)

    def own(self):
        # A real time stamp, as the protocol demands.
        self.window.change_property(self.atom("STAMP"), Xatom.STRING, 8, b"")
        self.display.flush()
        while (stamp := self.display.next_event()).type != X.PropertyNotify:
            pass
        self.time = stamp.time
        self.window.set_selection_owner(self.atom(self.selection), self.time)
        self.display.sync()

    def clear(self):
        """Gives the clipboard up: it is empty then, on purpose. Only the owner's thread waits for the server's
        answers: those to another one may get lost between the two."""
        os.write(self.stop_write, b"c")
        if not self.cleared.wait(10):
            raise AssertionError("the owner did not give the clipboard up")

    def _give_up(self):
        request.SetSelectionOwner(display=self.display.display, window=X.NONE, selection=self.atom(self.selection),
                                  time=X.CurrentTime)
        self.display.sync()
        self.cleared.set()

    def close(self):
        """The program ends: its windows and its selection go away."""
        if self.stop_write is None:
            return
        os.write(self.stop_write, b"x")
        self.thread.join(10)
        os.close(self.stop_read)
        os.close(self.stop_write)
        self.stop_write = None

    def _run(self):
        try:
            while True:
                while self.display.pending_events():
                    self._handle(self.display.next_event())
                ready = select.select([self.display.fileno(), self.stop_read], [], [], self.tick())[0]
                if self.stop_read in ready:
                    if os.read(self.stop_read, 1) == b"x":
                        break
                    self._give_up()
        except (Xlib.error.ConnectionClosedError, OSError):
            return
        try:
            self.display.close()
        except (Xlib.error.ConnectionClosedError, OSError):
            pass

    def tick(self):
        """Called between events; returns how long to wait for the next one at most, in seconds."""
        return None

    def _handle(self, message):
        if message.type == X.SelectionClear:
            self.lost.set()
        elif message.type == X.SelectionRequest:
            target = self.display.get_atom_name(message.target)
            self.asked.append(target)
            self.answer(message, target)
            self.display.flush()
        elif message.type == X.PropertyNotify and message.state == X.PropertyDelete:
            self.go_on(message.window, message.atom)

    # --- answers

    def answer(self, question, target):
        if target == "TARGETS":
            self.put(question, Xatom.ATOM, 32, [self.atom(name) for name in ("TARGETS", *self.offers)])
        elif target in self.offers:
            data = self.offers[target]
            if len(data) > CHUNK:
                self.begin(question, target, [data[at:at + CHUNK] for at in range(0, len(data), CHUNK)], len(data))
            else:
                self.put(question, self.atom(target), 8, data)
                self.served.set()
        else:
            self.notify(question, X.NONE)

    def put(self, question, kind, width, data):
        question.requestor.change_property(question.property, kind, width, data)
        self.notify(question, question.property)

    def notify(self, question, at):
        question.requestor.send_event(event.SelectionNotify(
            time=question.time, requestor=question.requestor, selection=question.selection, target=question.target,
            property=at), 0)

    def begin(self, question, target, parts, announced):
        """Hands over in parts, each when the one before it was taken."""
        question.requestor.change_attributes(event_mask=X.PropertyChangeMask)
        self.transfers[(question.requestor.id, question.property)] = (self.atom(target), iter([*parts, b""]))
        self.put(question, self.atom("INCR"), 32, [announced])

    def go_on(self, window, at):
        transfer = self.transfers.get((window.id, at))
        if not transfer:
            return
        kind, parts = transfer
        part = next(parts, None)
        if part is None:
            return
        window.change_property(at, kind, 8, part)
        self.display.flush()
        if part == b"":
            del self.transfers[(window.id, at)]
            self.served.set()


class Silent(Owner):
    """Never answers."""

    def answer(self, question, target):
        pass


class DiesInTheMiddle(Owner):
    """Begins to hand over in parts and is gone after the second one."""

    left = 2

    def answer(self, question, target):
        if target in self.offers:
            self.begin(question, target, [b"x" * 1000] * 10, 10_000)
        else:
            super().answer(question, target)

    def go_on(self, window, at):
        super().go_on(window, at)
        self.left -= 1
        if self.left == 0:
            self.display.flush()
            raise OSError("gone")

    def _run(self):
        super()._run()
        self.display.close()


class Reader:
    """Pastes: asks CLIPBOARD for a target and takes the answer, in parts too."""

    def __init__(self, name, selection="CLIPBOARD"):
        self.display = Xlib.display.Display(name)
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.window.change_attributes(event_mask=X.PropertyChangeMask)
        self.selection = self.display.intern_atom(selection)
        self.slot = self.display.intern_atom("READER_SLOT")

    def close(self):
        self.display.close()

    def ask(self, target):
        self.target = self.display.intern_atom(target)
        self.window.convert_selection(self.selection, self.target, self.slot, X.CurrentTime)
        self.display.flush()

    def _next(self, kind, end, matches=lambda _: True):
        while time.monotonic() < end:
            while self.display.pending_events():
                message = self.display.next_event()
                if message.type == kind and matches(message):
                    return message
            select.select([self.display.fileno()], [], [], max(0.0, min(0.2, end - time.monotonic())))
        raise TimeoutError("no answer to a paste")

    def take(self, seconds=10, parts=None):
        """The answer: type name, width and value; (None, 0, None) for a refusal. With `parts` it stops reading
        after so many parts and returns what it has."""
        end = time.monotonic() + seconds
        answer = self._next(X.SelectionNotify, end)
        if answer.property == X.NONE:
            return None, 0, None
        found = self.window.get_full_property(self.slot, X.AnyPropertyType)
        kind = self.display.get_atom_name(found.property_type)
        if kind != "INCR":
            self.window.delete_property(self.slot)
            self.display.flush()
            return kind, found.format, found.value
        pieces = []
        # Deleting the announcement asks for the first part.
        self.window.delete_property(self.slot)
        self.display.flush()
        while parts is None or len(pieces) < parts:
            self._next(X.PropertyNotify, end, lambda m: m.atom == self.slot and m.state == X.PropertyNewValue)
            found = self.window.get_full_property(self.slot, X.AnyPropertyType)
            kind, piece = self.display.get_atom_name(found.property_type), bytes(found.value)
            if parts is None or len(pieces) + 1 < parts:
                self.window.delete_property(self.slot)
                self.display.flush()
            if not piece:
                break
            pieces.append(piece)
        return kind, 8, b"".join(pieces)

    def paste(self, target="UTF8_STRING", seconds=10):
        self.ask(target)
        return self.take(seconds)
