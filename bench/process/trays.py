"""A tray of our own, which tells to the moment when an icon is in it, and presses it."""
import select
import time

import Xlib.display
from Xlib import X
from Xlib.ext import xtest
from Xlib.protocol import event


class Tray:
    def __init__(self, name):
        self.display = Xlib.display.Display(name)
        self.display.set_error_handler(lambda *_: None)  # windows go away while we look
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        atom = self.display.intern_atom
        self.selection, self.opcode = atom("_NET_SYSTEM_TRAY_S0"), atom("_NET_SYSTEM_TRAY_OPCODE")
        self.window = self.root.create_window(100, 100, 400, 24, 0, X.CopyFromParent, override_redirect=1,
                                              event_mask=X.SubstructureNotifyMask | X.SubstructureRedirectMask)
        self.window.map()
        self.window.set_selection_owner(self.selection, X.CurrentTime)
        self.root.send_event(event.ClientMessage(
            window=self.root, client_type=atom("MANAGER"),
            data=(32, [X.CurrentTime, self.selection, self.window.id, 0, 0])), event_mask=X.StructureNotifyMask)
        self.display.sync()
        self.icon = None

    def close(self):
        self.display.close()

    def events(self, seconds):
        """The events of the next seconds, as they come."""
        end = time.monotonic() + seconds
        while True:
            while self.display.pending_events():
                yield self.display.next_event()
            left = end - time.monotonic()
            if left <= 0:
                return
            select.select([self.display.fileno()], [], [], left)

    def await_icon(self, seconds=10):
        """Takes in the next icon; the moment at which it is shown, None if none comes."""
        self.icon = None
        for each in self.events(seconds):
            if each.type == X.ClientMessage and each.client_type == self.opcode and each.data[1][1] == 0:
                self.icon = self.display.create_resource_object("window", each.data[1][2])
                self.icon.reparent(self.window, 0, 0)
                self.icon.configure(width=24, height=24)
                self.icon.map()
                self.display.flush()
            elif each.type == X.MapNotify and self.icon and each.window.id == self.icon.id:
                return time.monotonic()
            elif each.type == X.ConfigureRequest and self.icon and each.window.id == self.icon.id:
                self.icon.configure(width=24, height=24)
                self.display.flush()
        return None

    def _press(self, kind, button):
        xtest.fake_input(self.display, kind, button)
        self.display.flush()

    def menu_time(self, button=3, seconds=3):
        """Presses the icon; seconds until a popup stands on the screen. Closes it again."""
        xtest.fake_input(self.display, X.MotionNotify, x=112, y=112)
        self.display.sync()
        for _ in self.events(0.15):
            pass
        start = time.monotonic()
        self._press(X.ButtonPress, button)
        taken = None
        for each in self.events(seconds):
            if each.type == X.MapNotify and each.override:
                geometry = each.window.get_geometry()
                if geometry.height > 100:
                    taken = time.monotonic() - start
                    break
        self._press(X.ButtonRelease, button)
        # The menu takes the keyboard a moment after it has come up.
        for _ in self.events(0.3):
            pass
        self._key("Escape")
        for _ in self.events(0.3):
            pass
        return taken

    def key_time(self, keys=("Control_L", "Alt_L", "v"), seconds=5):
        """Presses the key that opens the program's window; seconds until that has the keyboard's focus. Sends it away."""
        from Xlib import XK

        def press(kind, names):
            for name in names:
                xtest.fake_input(self.display, kind, self.display.keysym_to_keycode(XK.string_to_keysym(name)))
            self.display.sync()

        def await_focus(wanted):
            start = time.monotonic()
            while ((focus := self.display.get_input_focus().focus) != X.PointerRoot
                   and (focus.get_wm_class() or ("",))[0] == "quillbox") != wanted:
                if time.monotonic() - start > seconds:
                    raise RuntimeError("the focus did not come or did not go")
            return time.monotonic() - start

        taken = []
        for wanted in (True, False):
            press(X.KeyPress, keys)
            taken.append(await_focus(wanted))
            press(X.KeyRelease, keys[::-1])
            for _ in self.events(0.3):
                pass
        return taken[0]

    def _key(self, name):
        from Xlib import XK

        code = self.display.keysym_to_keycode(XK.string_to_keysym(name))
        xtest.fake_input(self.display, X.KeyPress, code)
        xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()
