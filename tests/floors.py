#!/usr/bin/env python3
"""The floors of the source tree: which file may include which.

A file includes only files of its own or a lower floor, and no two files include each other, not even round a
corner. Only the outermost folders know anything but the standard library.
"""
import graphlib
import pathlib
import re
import sys

# A row a floor, lowest first.
FLOORS = (
    ("base",),
    ("platform/ports", "platform/forms"),
    ("core/settings",),
    ("core/window", "tray/tips"),
    ("storage",),
    ("tray/menu", "find"),
    ("clip", "pad", "calc", "timer", "todo"),
    ("dialogs", "tray/commands"),
    ("core/app",),
    ("platform/linux/files", "platform/linux/registry", "platform/linux/system", "platform/xkb",
     "platform/wayland/clipboard", "platform/wayland/keys",
     "platform/x11/server", "platform/x11/clipboard", "platform/x11/keys"),
    ("platform/qt/base",),
    ("platform/qt/ports", "platform/qt/portal", "platform/qt/sound"),
    ("platform/qt/widgets",),
    ("platform/qt/views",),
    ("platform/qt",),
    ("",),
)
FLOOR = {folder: number for number, row in enumerate(FLOORS, 1) for folder in row}
OUTERMOST = FLOOR["platform/linux/files"]  # from here up: what knows the system, X11 or Qt
# These know the ports that they are the real side of, and none of the logic.
OUTSIDE = re.compile("platform/(linux|xkb|x11|wayland)(?=/)")
SEEN_FROM_OUTSIDE = ("base", "platform/ports", "platform/xkb")

STANDARD = re.compile("[a-z_]+")  # headers of no other library have neither a capital nor an ending
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def folder_of(path):
    return path.rpartition("/")[0]


def check_include(path, quotes, name, includes):
    """What is wrong with one line, or nothing."""
    folder, other = folder_of(path), folder_of(name)
    outermost = FLOOR[folder] >= OUTERMOST
    if quotes == "<":
        is_known = outermost or STANDARD.fullmatch(name)
        return None if is_known else f"includes <{name}>, which is not of the standard library"
    if name not in includes:
        # Headers that a build makes from the project's files belong to the outermost folders.
        return None if outermost else f'includes "{name}", which isn\'t in the tree'
    if FLOOR.get(other, 0) > FLOOR[folder]:
        return f'(floor {FLOOR[folder]}) includes "{name}" of floor {FLOOR[other]}'
    side = OUTSIDE.match(path)
    if side and other not in SEEN_FROM_OUTSIDE and not name.startswith(side[0] + "/"):
        return f'includes "{name}", which is none of the ports'
    return None


def check(includes):
    faults = [f"{path}: stands on no floor" for path in includes if folder_of(path) not in FLOOR]
    known = {path: names for path, names in includes.items() if folder_of(path) in FLOOR}
    faults += [f"{path}: {fault}" for path, names in known.items() for each in names
               if (fault := check_include(path, *each, includes))]
    try:
        graphlib.TopologicalSorter({path: [name for quotes, name in names if quotes == '"' and name in includes]
                                    for path, names in known.items()}).prepare()
    except graphlib.CycleError as circle:
        faults.append("a circle of includes: " + " -> ".join(circle.args[1]))
    return faults


def check_the_check():
    """Each kind of fault is found in a tree that has it alone, and none in a sound one."""
    sound = {
        "base/Text.h": [("<", "string")],
        "platform/ports/Clock.h": [('"', "base/Text.h")],
        "core/settings/Settings.h": [('"', "base/Text.h")],
        "clip/A.h": [],
        "pad/B.h": [('"', "clip/A.h")],
        "platform/x11/keys/Keys.h": [("<", "xcb/xcb.h"), ('"', "platform/ports/Clock.h")],
        "platform/qt/views/View.h": [("<", "QWidget"), ('"', "core/settings/Settings.h")],
    }
    assert not check(sound), check(sound)
    for path, quotes, name, word in (
        ("base/Text.h", '"', "core/settings/Settings.h", "floor"),
        ("base/Text.h", '"', "base/Text.h", "circle"),
        ("clip/A.h", '"', "pad/B.h", "circle"),
        ("core/settings/Settings.h", "<", "QString", "standard library"),
        ("core/settings/Settings.h", "<", "xcb/xcb.h", "standard library"),
        ("core/settings/Settings.h", '"', "nowhere.h", "in the tree"),
        ("platform/x11/keys/Keys.h", '"', "core/settings/Settings.h", "none of the ports"),
        ("clip/new/C.h", "<", "string", "no floor"),
    ):
        faults = check({**sound, path: [*sound.get(path, []), (quotes, name)]})
        assert any(word in fault for fault in faults), (path, name, faults)


def main():
    check_the_check()
    root = pathlib.Path(sys.argv[1])
    includes = {str(path.relative_to(root)): INCLUDE.findall(path.read_text("utf-8"))
                for path in sorted(root.rglob("*")) if path.suffix in (".h", ".cpp", ".inc")}
    faults = check(includes)
    print(*faults, f"{len(includes)} files, {len(faults)} faults", sep="\n")
    sys.exit(1 if faults or not includes else 0)


main()
