"""Other programs in drag and drop (XDND): one that drops onto a window, and one that takes a drop."""
import select
import threading
import time

import Xlib.display
from Xlib import X, Xatom
from Xlib.protocol import event

from clients import Owner

VERSION = 5
SECONDS = 5  # for an answer


class _Partner(Owner):
    """What both have in common: a window and its messages. It has no thread and acts only while it is asked to."""

    def __init__(self, name, offers):
        self.display = Xlib.display.Display(name)
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.offers, self.transfers, self.asked = dict(offers), {}, []
        self.lost, self.served = threading.Event(), threading.Event()
        self.messages = []
        self.own()

    def close(self):
        self.display.close()

    def _handle(self, message):
        if message.type == X.ClientMessage:
            self.messages.append((self.display.get_atom_name(message.client_type), list(message.data[1])))
        else:
            super()._handle(message)

    def serve(self, condition, seconds=SECONDS):
        """Answers until the condition holds; False if it never does."""
        end = time.monotonic() + seconds
        while not (found := condition()) and time.monotonic() < end:
            while self.display.pending_events():
                self._handle(self.display.next_event())
            self.display.flush()
            select.select([self.display.fileno()], [], [], 0.01)
        return bool(found)

    def tell(self, window, kind, data):
        window.send_event(event.ClientMessage(window=window, client_type=self.atom(kind), data=(32, data)), 0)
        self.display.flush()

    def expect(self, kind):
        if not self.serve(lambda: any(name == kind for name, _ in self.messages)):
            raise AssertionError(f"no {kind} from the other side")
        found = next(data for name, data in self.messages if name == kind)
        self.messages.clear()
        return found


class DragSource(_Partner):
    """Drags what it offers, target name -> bytes."""

    def own(self):
        self.time = X.CurrentTime
        self.window.set_selection_owner(self.atom("XdndSelection"), X.CurrentTime)
        self.display.sync()

    def drop(self, target, x, y):
        """Drops onto a place of the screen over the window `target`; False if it doesn't want it there."""
        window = self.display.create_resource_object("window", target.id)
        if not window.get_full_property(self.atom("XdndAware"), X.AnyPropertyType):
            raise AssertionError("the window knows nothing of drag and drop")
        kinds = [self.atom(name) for name in self.offers][:3]
        self.tell(window, "XdndEnter", [self.window.id, VERSION << 24, *kinds, *[0] * (3 - len(kinds))])
        self.tell(window, "XdndPosition", [self.window.id, 0, x << 16 | y, X.CurrentTime, self.atom("XdndActionCopy")])
        accepted = bool(self.expect("XdndStatus")[1] & 1)
        self.tell(window, "XdndDrop" if accepted else "XdndLeave", [self.window.id, 0, X.CurrentTime, 0, 0])
        if accepted:
            self.expect("XdndFinished")
        else:
            time.sleep(0.2)  # leaving is answered by nothing
        return accepted


class DropTarget(_Partner):
    """A window at a place of the screen that takes texts; `texts` are those that came."""

    TARGET = "UTF8_STRING"

    def __init__(self, name, x, y, width=200, height=100):
        self.place, self.texts, self.dropped = (x, y, width, height), [], False
        super().__init__(name, {})

    def own(self):
        x, y, width, height = self.place
        self.window.configure(x=x, y=y, width=width, height=height)
        self.window.change_attributes(override_redirect=True)
        self.window.change_property(self.atom("XdndAware"), Xatom.ATOM, 32, [VERSION])
        self.window.map()
        self.display.sync()

    @property
    def middle(self):
        return self.place[0] + self.place[2] // 2, self.place[1] + self.place[3] // 2

    def _handle(self, message):
        if message.type == X.SelectionNotify:
            found = self.window.get_full_property(message.property, X.AnyPropertyType) if message.property else None
            if found:
                self.texts.append(bytes(found.value).decode())
            self.finish()
            return
        if message.type != X.ClientMessage:
            return
        kind, data = self.display.get_atom_name(message.client_type), message.data[1]
        self.source = self.display.create_resource_object("window", data[0])
        if kind == "XdndPosition":
            self.tell(self.source, "XdndStatus", [self.window.id, 1, 0, 0, self.atom("XdndActionCopy")])
        elif kind == "XdndDrop":
            self.window.convert_selection(self.atom("XdndSelection"), self.atom(self.TARGET), self.atom("DROPPED"), data[2])
            self.display.flush()

    def finish(self):
        self.tell(self.source, "XdndFinished", [self.window.id, 1, self.atom("XdndActionCopy"), 0, 0])
        self.dropped = True
