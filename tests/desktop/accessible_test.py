#!/usr/bin/env python3
"""What a screen reader finds: each control that can have the focus has a role and a name."""
import unittest

import accessible
from case import DesktopCase
from desktop import wait_for

NAMELESS = {"unknown", "invalid", ""}
PAGES = ("Clip", "Pad", "Calc", "Timer", "ToDo")


class Names(DesktopCase):
    DESKTOP = {"accessibility": True}

    def bad(self, window):
        """The controls of a window that have the focus at times but no name or no role."""
        return [f"{node['role']} at {node['place']}" for node in accessible.walk(window)
                if node["focusable"] and node["showing"] and (not node["name"].strip() or node["role"] in NAMELESS)]

    def controls(self, window):
        return [node for node in accessible.walk(window) if node["focusable"] and node["showing"]]

    def node(self, title):
        return wait_for(f"the window {title}", lambda: accessible.window(self.desktop, title), 30)

    def test_all_pages(self):
        self.desktop.start_program()
        window = self.desktop.show_window()
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        faults, seen = {}, set()
        for page in PAGES:
            tree = self.node("Quillbox")
            found = {node["name"] for node in self.controls(tree)}
            self.assertGreater(len(found - seen), 2, f"controls of the page {page}")
            seen |= found
            if bad := self.bad(tree):
                faults[page] = bad
            self.desktop.picture(f"page-{page.lower()}")
            self.desktop.key("ctrl+Tab")
        self.assertEqual({}, faults)

    def test_dialogs(self):
        self.desktop.start_program()
        faults = {}
        for key, name in (("s", "settings"), ("i", "info"), ("h", "start-help")):
            before = set(self.desktop.client_list())
            self.desktop.open_menu()
            self.desktop.key(key)
            wait_for("the menu's end", lambda: not self.desktop.menu())
            dialog = wait_for(f"the dialog {name}", lambda: self.dialog(before))
            title = bytes(self.desktop.property(dialog, "_NET_WM_NAME")).decode()
            tree = self.node(title)
            self.desktop.picture(f"dialog-{name}")
            self.assertGreater(len(self.controls(tree)), 0, name)
            if bad := self.bad(tree):
                faults[name] = bad
            self.desktop.xdotool("windowactivate", "--sync", dialog.id, "key", "Escape")
            self.desktop.xdotool("windowclose", dialog.id) if self.desktop.is_viewable(dialog) else None
            wait_for("the dialog's end", lambda: dialog.id not in self.desktop.client_list())
        self.assertEqual({}, faults)

    def dialog(self, before):
        """The window that is new and not the main one."""
        for window, attributes, geometry, _ in self.desktop.windows():
            name = self.desktop.property(window, "_NET_WM_NAME")
            if (window.id not in before and name is not None and not attributes.override_redirect
                    and geometry[2] > 100 and bytes(name) != b"Quillbox" and self.desktop.is_viewable(window)):
                return window
        return None


if __name__ == "__main__":
    unittest.main()
