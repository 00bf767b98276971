#!/usr/bin/env python3
"""The floors of the source tree: which file may include which.

A file includes only files of its own or a lower floor, and no two files include each other, not even round a
corner. Only the two outermost folders know anything but the standard library.
"""
import os
import re
import sys

# A path's floor is that of the longest entry that it begins with.
FLOORS = {
    "platform/": 1,
    "core/": 2,
    "storage/": 3,
    "core/MainWindow": 4,
    "core/StatusArea": 4,
    "core/PadRoom": 4,
    "core/DeleteKey": 4,
    "tray/": 5,
    "clip/": 6,
    "pad/": 6,
    "calc/": 6,
    "timer/": 6,
    "todo/": 6,
    "tray/TrayCommands": 7,
    "dialogs/": 7,
    "core/frmTray": 8,
    "platform/linux/": 9,
    "platform/qt/": 9,
    "main.cpp": 10,
}
FREE = ("platform/linux/", "platform/qt/", "main.cpp")

STANDARD = set("""
algorithm any array atomic bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes climits clocale
cmath compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib
cstring ctime cuchar cwchar cwctype deque exception execution expected filesystem format forward_list fstream
functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map
memory memory_resource mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator
semaphore set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view
strstream syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility
valarray variant vector version
""".split())

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def floor_of(path):
    return FLOORS[max((start for start in FLOORS if path.startswith(start)), key=len)]


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


def find_circle(graph):
    """The files of a circle of includes, or nothing."""
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for other in graph.get(node, ()):
            circle = visit(other)
            if circle:
                return circle
        path.pop()
        done.add(node)
        return None

    for node in sorted(graph):
        circle = visit(node)
        if circle:
            return circle
    return None


def check(includes):
    faults = []
    graph = {}
    for path, names in includes.items():
        if not any(path.startswith(start) for start in FLOORS):
            faults.append(f"{path}: stands on no floor")
            continue
        for quotes, name in names:
            if quotes == "<":
                if name not in STANDARD and not path.startswith(FREE):
                    faults.append(f"{path}: includes <{name}>, which is not of the standard library")
                continue
            if name not in includes:
                # Headers that a build makes from the project's files belong to the outermost folders.
                if not path.startswith(FREE):
                    faults.append(f'{path}: includes "{name}", which isn\'t in the tree')
                continue
            graph.setdefault(path, []).append(name)
            if floor_of(name) > floor_of(path):
                faults.append(f'{path} (floor {floor_of(path)}): includes "{name}" of floor {floor_of(name)}')
    circle = find_circle(graph)
    if circle:
        faults.append("a circle of includes: " + " -> ".join(circle))
    return faults


def check_the_check():
    """Each kind of fault is found in a tree that has it alone, and none in a sound one."""
    sound = {
        "platform/Text.h": [("<", "string")],
        "core/Settings.h": [('"', "platform/Text.h")],
        "platform/qt/View.h": [("<", "QWidget"), ('"', "core/Settings.h")],
    }
    assert not check(sound), check(sound)
    for path, include, word in (
        ("platform/Text.h", ('"', "core/Settings.h"), "floor"),
        ("platform/Text.h", ('"', "platform/Text.h"), "circle"),
        ("core/Settings.h", ("<", "QString"), "standard library"),
        ("core/Settings.h", ("<", "xcb/xcb.h"), "standard library"),
        ("core/Settings.h", ('"', "nowhere.h"), "in the tree"),
    ):
        tree = {name: list(names) for name, names in sound.items()}
        tree[path].append(include)
        assert any(word in fault for fault in check(tree)), (path, include)
    around = dict(sound, **{"clip/A.h": [('"', "pad/B.h")], "pad/B.h": [('"', "clip/A.h")]})
    assert any("circle" in fault for fault in check(around))


def main():
    check_the_check()
    includes = read_includes(sys.argv[1])
    if not includes:
        sys.exit(f"no sources in {sys.argv[1]}")
    faults = check(includes)
    for fault in faults:
        print(fault)
    print(f"{len(includes)} files, {len(faults)} faults")
    sys.exit(1 if faults else 0)


main()
