#!/usr/bin/env python3
"""A screen reader's view of the program that stays connected: the tree of its windows, and where the focus goes.

`ScreenReader(desktop)` starts this file as a process with the desktop's environment and asks it, a line of JSON
for each question and each answer.
"""
import json
import pathlib
import select
import subprocess
import sys
import time

ANSWER = 0.6  # seconds in which a key that moves the focus has moved it
PATIENCE = 50  # seconds for an answer
MOST = 60  # presses of Tab; no window has as many controls
OTHERWISE = {"button": "push button"}  # as newer libraries call it
STATES = ("FOCUSABLE", "FOCUSED", "SHOWING", "VISIBLE", "ENABLED", "SENSITIVE", "CHECKED", "CHECKABLE", "SELECTED")


class Server:
    def __init__(self):
        import gi
        import Xlib.display

        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib

        self.api, self.loop = Atspi, GLib.MainContext.default()
        self.display = Xlib.display.Display()
        self.focus = None
        self.listener = Atspi.EventListener.new(self.focused)
        self.listener.register("object:state-changed:focused")

    def focused(self, event):
        if event.detail1 and event.source and event.source.get_application().get_name() == "quillbox":
            self.focus = event.source

    def wait(self, seconds, condition=lambda: False):
        end = time.monotonic() + seconds
        while time.monotonic() < end and not condition():
            if not self.loop.iteration(False):
                time.sleep(0.002)

    def node(self, node):
        if node is None:
            return None
        states = node.get_state_set()
        role = node.get_role_name()
        found = {"role": OTHERWISE.get(role, role), "name": node.get_name() or "",
                 "description": node.get_description() or "",
                 "states": [name for name in STATES if states.contains(getattr(self.api.StateType, name))]}
        try:
            place = node.get_extents(self.api.CoordType.SCREEN)
            found["place"] = [place.x, place.y, place.width, place.height]
        except Exception:  # a node without a place
            found["place"] = None
        return found

    def tree(self, node):
        node.clear_cache()
        found = self.node(node)
        children = [node.get_child_at_index(index) for index in range(min(node.get_child_count(), 200))]
        found["children"] = [self.tree(child) for child in children if child]
        return found

    def window(self, title):
        desktop = self.api.get_desktop(0)
        for index in range(desktop.get_child_count()):
            program = desktop.get_child_at_index(index)
            if not program or program.get_name() != "quillbox":
                continue
            program.clear_cache()
            for child in (program.get_child_at_index(at) for at in range(program.get_child_count())):
                if child and child.get_name() == title:
                    return self.tree(child)
        return None

    def press(self, name, shift):
        import Xlib.XK
        from Xlib import X
        from Xlib.ext import xtest

        codes = [self.display.keysym_to_keycode(Xlib.XK.string_to_keysym(key))
                 for key in (("Shift_L", name) if shift else (name,))]
        self.wait(0.01)
        self.focus = None
        for code in codes:
            xtest.fake_input(self.display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.sync()

    def tab(self, shift):
        self.press("Tab", shift)
        self.wait(ANSWER, lambda: self.focus is not None)
        if self.focus is None:
            # The program may have asked who listens in the moment before this listener came.
            self.listener.deregister("object:state-changed:focused")
            self.listener.register("object:state-changed:focused")
        return self.node(self.focus)

    def tab_to(self, name, shift):
        seen = []
        while len(seen) < MOST:
            found = self.tab(shift)
            if found and found["name"] == name:
                return {"found": True, "seen": seen}
            seen.append(found and found["name"])
        return {"found": False, "seen": seen}

    def round(self):
        """Presses Tab until the first control comes again."""
        found = []
        while len(found) < MOST:
            node = self.tab(False)
            if found and node == found[0]:
                break
            found.append(node)
        return found

    def run(self):
        print("ready", flush=True)
        for line in sys.stdin:
            verb, *arguments = json.loads(line)
            print(json.dumps(getattr(self, verb)(*arguments)), flush=True)


class ScreenReader:
    """The test's end. The window asked about must have the keyboard for what presses keys."""

    def __init__(self, desktop):
        self.process = subprocess.Popen([sys.executable, str(pathlib.Path(__file__).resolve())], env=desktop.environment,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        if self.process.stdout.readline() != "ready\n":
            raise AssertionError("no accessibility bus")

    def close(self):
        self.process.stdin.close()
        self.process.stdout.close()
        try:
            self.process.wait(3)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def _ask(self, *question):
        self.process.stdin.write(json.dumps(question) + "\n")
        self.process.stdin.flush()
        if not select.select([self.process.stdout], [], [], PATIENCE)[0]:
            raise AssertionError(f"no answer to {question}")
        return json.loads(self.process.stdout.readline())

    def window(self, title):
        """The tree of a window, None if there is none."""
        return self._ask("window", title)

    def tab_to(self, name, shift=False):
        """Presses Tab until the control of that name has the focus."""
        result = self._ask("tab_to", name, shift)
        if not result["found"]:
            raise AssertionError(f"Tab doesn't reach {name!r}, only {result['seen']}")

    def round(self):
        """All controls that Tab reaches, in order."""
        return self._ask("round")


def nodes(node, above=None):
    """The node and all below it that are shown, each with its parent."""
    if node and "SHOWING" in node["states"]:
        yield node, above
        for child in node["children"]:
            yield from nodes(child, node)


if __name__ == "__main__":
    Server().run()
