"""A Wayland compositor with nothing but a clipboard, in a thread of its own, which speaks the protocol byte by byte.

Its owners are made up by the tests; what clients offer can be pasted.
"""
import contextlib
import itertools
import os
import select
import socket
import struct
import threading

EXT, WLR = "ext_data_control_manager_v1", "zwlr_data_control_manager_v1"
# The events that are sent to objects.
DELETE_ID, GLOBAL, DONE = 1, 0, 0
DATA_OFFER, SELECTION, FINISHED, SEND, CANCELLED, TYPE = 0, 1, 2, 0, 1, 0
OURS = 0xFF000000  # the first number of objects that the compositor makes


def packed(argument):
    if isinstance(argument, int):
        return struct.pack("I", argument)
    data = argument.encode() + b"\0"
    return struct.pack("I", len(data)) + data + bytes(-len(data) % 4)


def text(body):
    return body[4:].rstrip(b"\0").decode()


class Owner:
    """Owns the clipboard and serves `offers`, type -> what is given:

    bytes; a list or a generator of them, written beside everything else; None, which is a refusal; a callable, which is
    handed owner and descriptor and does it all, or nothing.
    """

    def __init__(self, compositor, offers):
        self.compositor, self.types = compositor, offers
        self.asked = []  # the types that were asked for
        compositor.select(self)

    def give(self, kind, fd):
        self.asked.append(kind)
        given = self.types[kind]
        if callable(given):
            given(self, fd)
        else:
            parts = [given] if isinstance(given, bytes) else given or ()
            threading.Thread(target=self._write, args=(fd, parts), daemon=True).start()

    @staticmethod
    def _write(fd, parts):
        with contextlib.suppress(BrokenPipeError), open(fd, "wb", buffering=0) as pipe:
            for part in parts:
                pipe.write(part)

    def cancel(self):
        """Another has the clipboard now."""

    def close(self):
        """The program ends: the clipboard is nobody's."""
        if self.compositor.selection is self:
            self.compositor.select(None)


class Source:
    """What a client offers."""

    def __init__(self, client, number):
        self.client, self.number, self.types = client, number, []

    def give(self, kind, fd):
        self.client.say((self.number, SEND, kind), fd=fd)
        os.close(fd)

    def cancel(self):
        self.client.say((self.number, CANCELLED))


class Client:
    """A connection, with what the numbers of its objects stand for: a kind, and more where there is more to say."""

    def __init__(self, compositor, connection):
        self.compositor, self.connection = compositor, connection
        self.objects = {1: ("display", None)}
        self.numbers = itertools.count(OURS)
        self.unread, self.fds = b"", []

    def serve(self):
        """Takes the requests that have come in; False if the client has gone."""
        data, fds, *_ = socket.recv_fds(self.connection, 1 << 16, 64)
        self.unread += data
        self.fds += fds
        while len(self.unread) >= 8:
            number, code, size = struct.unpack("IHH", self.unread[:8])
            if len(self.unread) < size:
                break
            body, self.unread = self.unread[8:size], self.unread[size:]
            self._hear(number, code, body)
        return bool(data)

    def say(self, *messages, fd=None):
        """Each of a number, an event and its arguments."""
        said = b""
        for number, code, *arguments in messages:
            body = b"".join(map(packed, arguments))
            said += struct.pack("IHH", number, code, len(body) + 8) + body
        with contextlib.suppress(OSError):  # it has gone
            socket.send_fds(self.connection, [said], [] if fd is None else [fd])

    def tell_selection(self, device):
        if not (selection := self.compositor.selection):
            return self.say((device, SELECTION, 0))
        number = next(self.numbers)
        self.objects[number] = "offer", selection
        types = ((number, TYPE, kind) for kind in selection.types)
        return self.say((device, DATA_OFFER, number), *types, (device, SELECTION, number))

    def _hear(self, number, code, body):
        """A request of an object: its code is its place in the protocol."""
        kind, what = self.objects[number]
        first, last = (struct.unpack("I", part)[0] if body else 0 for part in (body[:4], body[-4:]))
        match kind, code:
            case "display", 0:  # a sync, which is answered at once
                self.say((last, DONE, 0), (1, DELETE_ID, last))
            case "display", 1:
                self.objects[last] = "registry", None
                self.say(*((last, GLOBAL, *named, 1) for named in enumerate(self.compositor.interfaces)))
            case "registry", 0:
                self.objects[last] = "manager" if first else "seat", None
            case "manager", 0:
                self.objects[last] = "source", Source(self, last)
            case "manager", 1:
                self.objects[first] = "device", None
                if self.compositor.selection or self.compositor.tells_of_nobody:
                    self.tell_selection(first)
            case "device", 0:
                source = self.objects[last][1] if last else None
                if source and self.compositor.refuses:
                    source.cancel()
                else:
                    self.compositor.select(source)
            case "source", 0:
                what.types.append(text(body))
            case "offer", 0:
                fd = self.fds.pop(0)
                if what is self.compositor.selection:
                    what.give(text(body), fd)
                else:
                    os.close(fd)
            case _:  # the end of the object
                del self.objects[number]
                if number < OURS:
                    self.say((1, DELETE_ID, number))
                    if what and what is self.compositor.selection:
                        self.compositor.select(None)


class Compositor:
    """`managers` are the interfaces by which it offers its clipboard."""

    def __init__(self, path, managers=(EXT,), tells_of_nobody=True, seat="wl_seat"):
        self.interfaces = (seat, *managers)
        self.refuses = False  # what clients offer
        self.tells_of_nobody = tells_of_nobody  # a new client, that the clipboard is empty
        self.selection = None  # an Owner, or a client's Source
        self.clients = {}  # by connection
        self.turn = threading.RLock()  # while it is held nothing happens here
        path.unlink(missing_ok=True)
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(str(path))
        self.listener.listen()
        self.ended = False
        self.thread = threading.Thread(target=self._run, daemon=True)
        self.thread.start()

    def _run(self):
        while not self.ended:
            ready = select.select([self.listener, *self.clients], [], [], 0.01)[0]
            with self.turn:
                for each in ready:
                    if each is self.listener:
                        connection = each.accept()[0]
                        self.clients[connection] = Client(self, connection)
                    elif not self.clients[each].serve():
                        each.close()
                        gone = self.clients.pop(each)
                        if isinstance(self.selection, Source) and self.selection.client is gone:
                            self.select(None)

    def close(self):
        """All connections break off, without a word."""
        self.ended = True
        self.thread.join()
        for each in self.listener, *self.clients:
            each.close()

    def devices(self):
        return ((client, number) for client in self.clients.values()
                for number, (kind, _) in [*client.objects.items()] if kind == "device")

    def select(self, selection):
        """The clipboard is an owner's, or nobody's."""
        with self.turn:
            old, self.selection = self.selection, selection
            if old and old is not selection:
                old.cancel()
            for client, device in self.devices():
                client.tell_selection(device)

    def finish(self):
        """Every clipboard becomes unusable."""
        with self.turn:
            for client, device in self.devices():
                client.say((device, FINISHED))

    def offered(self):
        """The types that a client offers, none if it has not got the clipboard."""
        with self.turn:
            return self.selection.types if isinstance(self.selection, Source) else []

    def paste(self, kind):
        """The file to read what the owner gives; None if it doesn't offer that type."""
        with self.turn:
            if not self.selection or kind not in self.selection.types:
                return None
            reading, writing = os.pipe()
            self.selection.give(kind, writing)
            return open(reading, "rb", buffering=0)
