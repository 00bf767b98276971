"""Every window in every look: nothing leaves its window, nothing overlaps, everything has a name and a role; and where
windows and tips stand."""
import itertools
import subprocess

import themes
from case import HELP, INFO, MESSAGE, PAGES, SETTINGS, DesktopCase
from desktop import wait_for
from screenreader import nodes

BUTTONS = {"push button", "check box", "radio button", "toggle button", "combo box"}
CONTROLS = BUTTONS | {"graphic", "text", "password text", "list", "label", "scroll bar", "spin button", "page tab",
                      "page tab list"}
UNREACHED = "Message of the timer"  # in the message's window Enter and Escape stay with the buttons


def holds(outer, inner):
    return all(outer[at] <= inner[at] and inner[at] + inner[at + 2] <= outer[at] + outer[at + 2] for at in (0, 1))


def overlap(one, other):
    return all(one[at] < other[at] + other[at + 2] and other[at] < one[at] + one[at + 2] for at in (0, 1))


def frameless(window, node, picture, scale):
    """Whether a picture of the window shows no line where the node begins on the left, half way down."""
    left = int((node.place[0] - window.place[0]) * scale) - 2
    middle = int((node.place[1] + node.place[3] / 2 - window.place[1]) * scale)
    command = ["convert", picture, "-crop", f"6x1+{left}+{middle}", "-unique-colors", "-format", "%w", "info:"]
    return int(subprocess.check_output(command)) < 3  # the window's colour, the line's, the list's


def faults(window, picture, scale):
    """What is wrong with a window, in words."""
    for node in nodes(window):
        is_control, is_list, takes_focus = node.role in CONTROLS, node.role == "list", "FOCUSABLE" in node.states
        is_usual = is_control or node.role == "list item" or "page tab list" in (each.role for each in node.children)
        wrong = {
            "is no window": node is window and node.role not in ("frame", "window", "dialog"),
            "leaves its window": is_control and not holds(window.place, node.place),
            "has no name": is_control and takes_focus and not node.name.strip(),
            "has no room": is_control and min(node.place[2:]) < 4,
            "cuts a row": is_list and not all(holds(node.place, row.place) for row in node.children),
            "has no frame": is_list and frameless(window, node, picture, scale),
            "takes the focus and has no usual role": takes_focus and not is_usual,
            "has buttons that overlap": any(overlap(one.place, other.place) for one, other in itertools.combinations(
                (each for each in node.children if each.role in BUTTONS), 2)),
        }
        what = f"{node.role} {node.name[:30]!r} at {node.place}"
        yield from (f"{what} {fault}" for fault, is_so in wrong.items() if is_so)


class Look(DesktopCase):
    """The default look; the others below."""

    LOOK = {}

    def see(self, title, name):
        """Saves the picture of a window and says what is wrong with it."""
        window = self.to_front(self.titled(title))
        tree = wait_for(f"{title} at rest",
                        lambda: (seen := self.reader.window(title)) == self.reader.window(title) and seen)
        self.assertGreater(sum(node.role in CONTROLS for node in nodes(tree)), 1, name)
        picture = self.desktop.picture(f"window-{type(self).__name__}-{name}", window.id)
        with self.subTest(name):
            self.assertEqual([], [*faults(tree, picture, self.LOOK.get("scale", 1))])
            self.assertEqual([], [] if self.LOOK else self.unreached(tree))

    def unreached(self, tree):
        """Tab goes to every control; of options to the chosen one, and from the tabs to none of them."""
        reached = {*self.reader.round(), UNREACHED}
        return [f"Tab doesn't reach {node.role} {node.name!r}" for node in nodes(tree)
                if node.role in CONTROLS - {"page tab"} and {"FOCUSABLE", "ENABLED"} <= node.states
                and (node.role != "radio button" or "CHECKED" in node.states) and node.name not in reached]

    def test_windows(self):
        themes.choose(self.desktop, **self.LOOK)
        self.start_reading("Clip")
        self.copy("Meeting on Tuesday, 10 o'clock", "https://example.org/?a=1&b=2", "Grüße aus Köln")
        for page in PAGES:
            self.see("Quillbox", page)
            self.desktop.key("ctrl+Tab")
        self.turn_to("Timer")
        self.count_down(1)
        self.find(MESSAGE, name="OK")
        self.see(MESSAGE, "Message")
        self.leave(MESSAGE)
        self.to_front(self.window)
        for key, title, tabs in (("s", SETTINGS, 3), ("i", INFO, 1), ("h", HELP, 1)):
            self.open_from_menu(key)
            self.in_front(title)
            for tab in range(tabs):
                self.see(title, f"{title.split()[-1]}-{tab}")
                self.desktop.key("ctrl+Tab")
            self.leave(title, "Escape")
            self.in_front()


class DarkFractionalScale(Look):
    DESKTOP = {"screen": "1920x1536x24"}
    LOOK = {"dark": True, "scale": 1.5}


class LargeFont(Look):
    DESKTOP = {"screen": "1920x1080x24"}
    LOOK = {"points": 20}


class Places(DesktopCase):
    def test_a_place_lasts(self):
        """Only the button keeps it; a page that needs more room leaves it; "Always on Top" is switched in the menu."""
        themes.choose(self.desktop, points=6)
        self.start_reading("Clip")
        for above in (True, False, True):
            wait_for("the menu's word", lambda: self.state(self.desktop.window("Quillbox"), "ABOVE") == above)
            self.open_from_menu("a")
        x, _, width, height = self.place()
        self.assertLess(abs(x + width / 2 - 640), 30, "centred at first")
        kept = self.move(100, 120)
        self.reader.tab_to("Minimize Quillbox")
        self.desktop.key("space")
        self.comes_back_at(kept)
        self.move(300, 50)  # the close box keeps nothing
        self.desktop.close_box(self.titled())
        self.comes_back_at(kept)
        dragged = self.move(200, 80)
        self.turn_to("Timer")
        wait_for("more room", lambda: self.place()[3] > height)
        self.next_copy_is_taken()
        self.stands_at(dragged)

    def place(self):
        return self.desktop.place(self.titled())

    def move(self, x, y):
        before = self.place()[:2]
        self.desktop.xdotool("windowmove", "--sync", self.titled().id, x, y)
        return wait_for("the move", lambda: (place := self.place()[:2]) != before and place)

    def stands_at(self, place):
        wait_for(f"the window at {place}", lambda: self.place()[:2] == place)

    def comes_back_at(self, place):
        self.gone()
        self.to_front(self.desktop.show_window())
        self.stands_at(place)


class Tips(DesktopCase):
    """On two monitors, the second one lower than the first: a tip stays on its own and beside what it is about."""

    DESKTOP = {"panel": False}
    FIRST, SECOND = (0, 0, 640, 1024), (640, 124, 640, 900)

    def test_settings_at_the_edges(self):
        for (left, top, width, height), output in ((self.FIRST, "screen"), (self.SECOND, "none")):
            size = f"{width}/{width // 4}x{height}/{height // 4}"
            self.desktop.run("xrandr", "--setmonitor", f"of-{output}", f"{size}+{left}+{top}", output)
        self.desktop.start_panel()  # which would begin anew with the monitors
        self.start_reading("Clip")
        self.open_from_menu("s")
        window = self.titled(SETTINGS)
        # Where the dialog stands, and from which side of the check box its tip is asked for.
        for area, is_left, place in ((self.FIRST, False, (500, 300)), (self.SECOND, True, (530, 300)),
                                     (self.SECOND, False, (1140, 300)), (self.SECOND, False, (700, 854))):
            with self.subTest(place):
                self.desktop.xdotool("mousemove", 640, 10, "windowmove", "--sync", window.id, *place)
                wait_for("no tip", lambda: not self.desktop.tip())
                wait_for("its own word", lambda: self.reader.window(SETTINGS).place == self.desktop.place(window))
                x, y, wide, high = self.find(SETTINGS, role="check box").place
                at = (max(x, area[0]) + 5 if is_left else min(x + wide, area[0] + area[2]) - 5, y + high // 2)
                tip = self.desktop.hover(*at)
                self.assertGreater(tip[3], 40, "a tip of several lines")
                self.assertTrue(holds(area, tip), f"{tip} in {area}")
                self.assertFalse(holds(tip, (*at, 1, 1)), "the tip covers what it is about")
