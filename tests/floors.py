#!/usr/bin/env python3
"""The floors of the source tree: which file may include which.

A file includes only files of its own or a lower floor, and no two files include each other, not even round a
corner. Only the two outermost folders know anything but the standard library.
"""
import graphlib
import os
import re
import sys

# One row a folder: its floor, and whether it may know more than the standard library.
FLOORS = {
    "base": 1,
    "platform/ports": 2,
    "platform/forms": 2,
    "core/settings": 3,
    "core/window": 4,
    "tray/tips": 4,
    "storage": 5,
    "tray/menu": 6,
    "find": 6,
    "clip": 7,
    "pad": 7,
    "calc": 7,
    "timer": 7,
    "todo": 7,
    "dialogs": 8,
    "tray/commands": 8,
    "core/app": 9,
    "platform/linux/files": 10,
    "platform/linux/registry": 10,
    "platform/linux/system": 10,
    "platform/xkb": 10,
    "platform/wayland/clipboard": 10,
    "platform/wayland/keys": 10,
    "platform/x11/server": 10,
    "platform/x11/clipboard": 10,
    "platform/x11/keys": 10,
    "platform/qt/base": 11,
    "platform/qt/ports": 12,
    "platform/qt/portal": 12,
    "platform/qt/sound": 12,
    "platform/qt/widgets": 13,
    "platform/qt/views": 14,
    "platform/qt": 15,
    "": 16,
}
OUTERMOST = 10  # from here up: what knows the system, X11 or Qt
# These know the ports that they are the real side of, and none of the logic.
OUTSIDE = ("platform/linux", "platform/xkb", "platform/x11", "platform/wayland")
SEEN_FROM_OUTSIDE = ("base", "platform/ports", "platform/xkb")

STANDARD = re.compile("[a-z_]+")  # headers of no other library have neither a capital nor an ending
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def side_of(folder):
    """The side of the outside world that a folder belongs to, if it is one of those that know no logic."""
    return next((side for side in OUTSIDE if folder == side or folder.startswith(side + "/")), None)


def read_includes(root):
    """Path in the tree -> list of (kind of quotes, name) in it."""
    includes = {}
    for folder, _, names in os.walk(root):
        for name in names:
            if not name.endswith((".h", ".cpp", ".inc")):
                continue
            path = os.path.relpath(os.path.join(folder, name), root)
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                includes[path] = INCLUDE.findall(file.read())
    return includes


def check_include(path, quotes, name, includes):
    """What is wrong with one line, or nothing."""
    folder = os.path.dirname(path)
    outermost = FLOORS[folder] >= OUTERMOST
    if quotes == "<":
        return None if outermost or STANDARD.fullmatch(name) else f"includes <{name}>, which is not of the standard library"
    if name not in includes:
        # Headers that a build makes from the project's files belong to the outermost folders.
        return None if outermost else f'includes "{name}", which isn\'t in the tree'
    other = os.path.dirname(name)
    if FLOORS.get(other, 0) > FLOORS[folder]:
        return f'(floor {FLOORS[folder]}) includes "{name}" of floor {FLOORS[other]}'
    side = side_of(folder)
    if side and other not in SEEN_FROM_OUTSIDE and side_of(other) != side:
        return f'includes "{name}", which is none of the ports'
    return None


def check(includes):
    faults = []
    graph = {}
    for path, names in includes.items():
        if os.path.dirname(path) not in FLOORS:
            faults.append(f"{path}: stands on no floor")
            continue
        for quotes, name in names:
            fault = check_include(path, quotes, name, includes)
            if fault:
                faults.append(f"{path}: {fault}")
            if quotes == '"' and name in includes:
                graph.setdefault(path, []).append(name)
    try:
        graphlib.TopologicalSorter(graph).prepare()
    except graphlib.CycleError as found:
        faults.append("a circle of includes: " + " -> ".join(found.args[1]))
    return faults


def check_the_check():
    """Each kind of fault is found in a tree that has it alone, and none in a sound one."""
    sound = {
        "base/Text.h": [("<", "string")],
        "platform/ports/Clock.h": [('"', "base/Text.h")],
        "core/settings/Settings.h": [('"', "base/Text.h")],
        "platform/x11/keys/Keys.h": [("<", "xcb/xcb.h"), ('"', "platform/ports/Clock.h")],
        "platform/qt/views/View.h": [("<", "QWidget"), ('"', "core/settings/Settings.h")],
    }
    assert not check(sound), check(sound)
    for path, include, word in (
        ("base/Text.h", ('"', "core/settings/Settings.h"), "floor"),
        ("base/Text.h", ('"', "base/Text.h"), "circle"),
        ("core/settings/Settings.h", ("<", "QString"), "standard library"),
        ("core/settings/Settings.h", ("<", "xcb/xcb.h"), "standard library"),
        ("core/settings/Settings.h", ('"', "nowhere.h"), "in the tree"),
        ("platform/x11/keys/Keys.h", ('"', "core/settings/Settings.h"), "none of the ports"),
    ):
        tree = {name: list(names) for name, names in sound.items()}
        tree[path].append(include)
        assert any(word in fault for fault in check(tree)), (path, include)
    around = dict(sound, **{"clip/A.h": [('"', "pad/B.h")], "pad/B.h": [('"', "clip/A.h")]})
    assert any("circle" in fault for fault in check(around))
    assert any("no floor" in fault for fault in check(dict(sound, **{"clip/new/A.h": []})))


def main():
    check_the_check()
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "src")
    includes = read_includes(root)
    if not includes:
        sys.exit(f"no sources in {root}")
    faults = check(includes)
    for fault in faults:
        print(fault)
    print(f"{len(includes)} files, {len(faults)} faults")
    sys.exit(1 if faults else 0)


main()
