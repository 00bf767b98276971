"""Other programs that copy: owners of the clipboard on a connection and a thread of their own."""
import os
import select
import threading
import time

import Xlib.display
import Xlib.error
from Xlib import X, Xatom
from Xlib.protocol import event

PIECE = 200_000  # bytes; what is longer goes in increments


class Owner:
    """Offers a text as UTF-8. One that hangs takes the clipboard and never answers."""

    def __init__(self, name, hangs=False):
        self.display = Xlib.display.Display(name)
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent,
                                                               event_mask=X.PropertyChangeMask)
        self.atoms = {each: self.display.intern_atom(each)
                      for each in ("CLIPBOARD", "TARGETS", "UTF8_STRING", "INCR", "TIMESTAMP")}
        self.hangs = hangs
        self.data = b""
        self.served = 0
        self.pieces = {}
        self.lock = threading.Lock()
        self.ended = False
        self.wake_read, self.wake_write = os.pipe()
        self.thread = threading.Thread(target=self._run, daemon=True)
        self.thread.start()

    def copy(self, text):
        """Takes the clipboard with this text; returns when the server knows it."""
        with self.lock:
            self.data = text if isinstance(text, bytes) else text.encode()
            self.served = 0
            self.window.set_selection_owner(self.atoms["CLIPBOARD"], X.CurrentTime)
            self.display.sync()
        self._wake()  # events may have been taken in with the answer

    def _wake(self):
        os.write(self.wake_write, b".")

    def close(self):
        self.ended = True
        self._wake()
        self.thread.join()
        self.display.close()

    def _run(self):
        while not self.ended:
            ready = select.select([self.display.fileno(), self.wake_read], [], [])[0]
            if self.wake_read in ready:
                os.read(self.wake_read, 1)
            with self.lock:
                # Sending may take further events in, of which the descriptor then tells nothing.
                while not self.ended and self.display.pending_events():
                    self._handle(self.display.next_event())
                    self.display.flush()

    def _handle(self, what):
        if what.type == X.SelectionRequest and not self.hangs:
            self._answer(what)
        elif what.type == X.PropertyNotify and what.state == X.PropertyDelete:
            self._next_piece(what.window, what.atom)

    def _answer(self, request):
        target, place = request.target, request.property or request.target
        if target == self.atoms["TARGETS"]:
            request.requestor.change_property(place, Xatom.ATOM, 32,
                                              [self.atoms["TARGETS"], self.atoms["UTF8_STRING"]])
        elif target == self.atoms["UTF8_STRING"] and len(self.data) > PIECE:
            request.requestor.change_attributes(event_mask=X.PropertyChangeMask)
            request.requestor.change_property(place, self.atoms["INCR"], 32, [len(self.data)])
            self.pieces[request.requestor.id, place] = [self.data, 0]
        elif target == self.atoms["UTF8_STRING"]:
            request.requestor.change_property(place, target, 8, self.data)
            self.served += 1
        else:
            place = X.NONE
        request.requestor.send_event(event.SelectionNotify(
            time=request.time, requestor=request.requestor, selection=request.selection, target=target,
            property=place))

    def _next_piece(self, window, place):
        entry = self.pieces.get((window.id, place))
        if not entry:
            return
        data, at = entry
        window.change_property(place, self.atoms["UTF8_STRING"], 8, data[at:at + PIECE])
        if at >= len(data):
            del self.pieces[window.id, place]
            self.served += 1
        entry[1] = at + PIECE


def wait_served(owner, seconds=10):
    """Waits until somebody has read the whole text; seconds until then, None if nobody did."""
    start = time.monotonic()
    while time.monotonic() - start < seconds:
        if owner.served:
            return time.monotonic() - start
        time.sleep(0.0005)
    return None
