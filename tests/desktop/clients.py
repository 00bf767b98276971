"""Clients of the clipboard: owners that behave well or badly, and readers. Each has a connection of its own."""
import array
import contextlib
import socket
import struct
import threading

import Xlib.display
import Xlib.error
from Xlib import X, Xatom
from Xlib.protocol import event

from screen import wait_for

CHUNK = 200_000  # bytes
LONGEST = 1 << 24  # of a property, in words of four bytes


class Owner(contextlib.AbstractContextManager):
    """Owns a selection, CLIPBOARD unless told otherwise, and serves `offers`, target name -> what is given:

    bytes, of the target's own type; (type name, width, bytes); a list or a generator of either, given part by part;
    None, which is a refusal; a callable, which is handed owner and question and does it all, or nothing.
    """

    def __init__(self, name, offers, selection="CLIPBOARD"):
        self.display_name, self.selection = name, selection
        self.display = Xlib.display.Display(name)
        self.display.set_error_handler(lambda *_: None)
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent,
                                                               event_mask=X.PropertyChangeMask)
        self.offers = dict(offers)
        self.transfers = {}  # (requestor's id, property) -> iterator over the parts
        self.asked = []  # names of the targets that were asked for
        self.thread = threading.Thread(target=self._run, daemon=True)
        self.own()
        self.thread.start()

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
        """Gives the clipboard up: it is empty then, on purpose."""
        display = Xlib.display.Display(self.display_name)  # of its own: the thread has the other one
        nobody = display.create_resource_object("window", X.NONE)
        nobody.set_selection_owner(display.intern_atom(self.selection), X.CurrentTime)
        display.sync()  # a request that comes with the connection's end may be left out
        display.close()

    def close(self):
        """The program ends: its windows and its selection go away."""
        with contextlib.suppress(OSError):
            self.display.display.socket.shutdown(socket.SHUT_RDWR)
        self.thread.join(10)

    def _run(self):
        ends = contextlib.suppress(Xlib.error.ConnectionClosedError, OSError)
        with ends, contextlib.closing(self.display):
            while True:
                self._handle(self.display.next_event())

    def _handle(self, message):
        if message.type == X.SelectionRequest:
            target = self.display.get_atom_name(message.target)
            self.asked.append(target)
            self.answer(message, target)
            self.display.flush()
        elif message.type == X.PropertyNotify and message.state == X.PropertyDelete:
            self.go_on(message.window, message.atom)

    # --- answers

    def answer(self, question, target):
        offer = self.offers.get(target)
        if target == "TARGETS" and target not in self.offers:
            self.put(question, "ATOM", 32, self.list_of(self.atom, "TARGETS", *self.offers))
        elif offer is None:
            self.notify(question, X.NONE)
        elif callable(offer):
            offer(self, question)
        elif not isinstance(offer, (bytes, tuple)):
            self.begin(question, target, offer)
        elif len(offer) > CHUNK:
            self.begin(question, target, in_pieces(offer, CHUNK))
        else:
            self.put(question, *self.typed(target, offer))

    @staticmethod
    def list_of(atom, *names):
        """A list of targets as its bytes; `atom` knows their numbers."""
        return struct.pack(f"{len(names)}I", *map(atom, names))

    @staticmethod
    def typed(target, offer):
        return offer if isinstance(offer, tuple) else (target, 8, offer)

    def put(self, question, kind, width, data):
        self.write(question.requestor, question.property, kind, width, data)
        self.notify(question, question.property)

    def write(self, window, at, kind, width, data):
        """In several requests, as none may be longer than the server takes."""
        for start in range(0, max(len(data), 1), CHUNK):
            part = data[start:start + CHUNK]
            values = part if width == 8 else array.array({16: "H", 32: "I"}[width], part)
            window.change_property(at, self.atom(kind), width, values, X.PropModeAppend if start else X.PropModeReplace)

    def notify(self, question, at):
        question.requestor.send_event(event.SelectionNotify(
            time=question.time, requestor=question.requestor, selection=question.selection, target=question.target,
            property=at), 0)

    def begin(self, question, target, parts, announced=bytes(4)):
        """Hands over in parts, each when the one before it was taken; an empty one is the end."""
        question.requestor.change_attributes(event_mask=X.PropertyChangeMask)
        self.transfers[(question.requestor.id, question.property)] = (target, iter(parts))
        self.put(question, "INCR", 32, announced)

    def go_on(self, window, at):
        target, parts = self.transfers.get((window.id, at), (None, iter(())))
        part = next(parts, None)
        if part is not None:
            self.write(window, at, *self.typed(target, part))
            self.display.flush()


def in_pieces(data, size):
    return [*(data[at:at + size] for at in range(0, len(data), size)), b""]


def silent(_owner, _question):
    """An offer that is never given; as TARGETS, an owner that never answers."""


def dies_in_the_middle(owner, question):
    """One whose owner is gone after the second part."""
    def parts():
        yield from [b"x" * 1000] * 2
        owner.display.flush()
        raise OSError("gone")

    owner.begin(question, "UTF8_STRING", parts())


class Reader:
    """Pastes: asks CLIPBOARD for a target and takes the answer, in parts too."""

    def __init__(self, name):
        self.display = Xlib.display.Display(name)
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent,
                                                               event_mask=X.PropertyChangeMask)
        self.selection = self.display.intern_atom("CLIPBOARD")
        self.slot = self.display.intern_atom("READER_SLOT")

    def close(self):
        with contextlib.suppress(Xlib.error.ConnectionClosedError):  # has been closed before
            self.display.close()

    def ask(self, target, time=X.CurrentTime):
        self.window.convert_selection(self.selection, self.display.intern_atom(target), self.slot, time)
        self.display.flush()

    def _next(self, kind, seconds, **wanted):
        """The next event of that kind and with these values."""
        def found():
            while self.display.pending_events():
                message = self.display.next_event()
                if message.type == kind and all(getattr(message, name) == value for name, value in wanted.items()):
                    return message
            return None

        return wait_for("an answer to a paste", found, seconds, 0.001)

    def _take_slot(self, delete=True):
        """What lies in the slot; deleting it asks for the next part."""
        found = self.window.get_property(self.slot, X.AnyPropertyType, 0, LONGEST, delete)
        return self.display.get_atom_name(found.property_type), found.format, found.value

    def take(self, seconds=10, parts=None):
        """The answer: type name, width and value; (None, 0, None) for a refusal. With `parts` it stops reading
        after so many parts and returns what it has."""
        if self._next(X.SelectionNotify, seconds).property == X.NONE:
            return None, 0, None
        answer = self._take_slot()
        if answer[0] != "INCR":
            return answer
        kind, self.pieces = None, []
        while len(self.pieces) != parts:
            self._next(X.PropertyNotify, seconds, atom=self.slot, state=X.PropertyNewValue)
            kind, _, piece = self._take_slot(len(self.pieces) + 1 != parts)
            if not piece:
                break
            self.pieces.append(bytes(piece))
        return kind, 8, b"".join(self.pieces)

    def paste(self, target="UTF8_STRING", seconds=10, time=X.CurrentTime):
        self.ask(target, time)
        return self.take(seconds)


class DragSource(Owner):
    """Drags what it offers, to be moved; `told` is what the windows answered, each time what they will do or that the
    drag has ended."""

    def __init__(self, name, offers):
        self.told = []
        super().__init__(name, offers, selection="XdndSelection")

    def _handle(self, message):
        if message.type == X.ClientMessage:
            ends = message.client_type == self.atom("XdndFinished")
            self.told.append("ended" if ends else self.display.get_atom_name(message.data[1][4]))
        else:
            super()._handle(message)

    def drop(self, window, x, y):
        """Drops onto a place of the screen over a window of another connection, which is used for all of it."""
        atom, source = window.display.get_atom, type(window)(window.display, self.window.id)

        def tell(kind, *data):
            data = (32, [source.id, *data, *[0] * (4 - len(data))])
            window.send_event(event.ClientMessage(window=window, client_type=atom(kind), data=data), 0)

        actions = [*map(atom, ("XdndActionCopy", "XdndActionMove"))]
        source.change_property(atom("XdndActionList"), Xatom.ATOM, 32, actions)
        tell("XdndEnter", 5 << 24, *map(atom, self.offers))
        tell("XdndPosition", 0, x << 16 | y, self.time, actions[1])
        tell("XdndDrop", 0, self.time)
        window.display.flush()


class Manager(Owner):
    """A clipboard manager: saves the clipboard's text when its owner asks for that, and says so if it `answers`."""

    def __init__(self, name, answers=True):
        self.answers, self.saved = answers, None
        super().__init__(name, {"SAVE_TARGETS": Manager.save}, selection="CLIPBOARD_MANAGER")

    def save(self, question):
        reader = Reader(self.display_name)
        self.targets = question.requestor.get_full_property(question.property, X.AnyPropertyType).value
        self.saved = bytes(reader.paste()[2])
        reader.close()
        if self.answers:
            self.put(question, "NULL", 32, b"")
