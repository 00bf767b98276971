#!/usr/bin/env python3
"""What a screen reader sees of the program: prints the tree of its windows as JSON. Run with the desktop's own
environment; `tree()` does that for a test."""
import json
import pathlib
import subprocess
import sys

TOO_MANY = 400  # children of one node; longer lists are cut


def dump(node, api):
    states = node.get_state_set()
    found = {
        "role": node.get_role_name(),
        "name": node.get_name() or "",
        "description": node.get_description() or "",
        "focusable": states.contains(api.StateType.FOCUSABLE),
        "showing": states.contains(api.StateType.SHOWING),
        "enabled": states.contains(api.StateType.ENABLED),
        "checked": states.contains(api.StateType.CHECKED),
        "children": [],
    }
    try:
        place = node.get_extents(api.CoordType.SCREEN)
        found["place"] = [place.x, place.y, place.width, place.height]
    except Exception:  # a node without a place
        found["place"] = [0, 0, 0, 0]
    for index in range(min(node.get_child_count(), TOO_MANY)):
        child = node.get_child_at_index(index)
        if child:
            found["children"].append(dump(child, api))
    return found


def main():
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi

    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        if program and program.get_name() == "quillbox":
            print(json.dumps(dump(program, Atspi)))
            return 0
    print("null")
    return 0


def tree(desktop):
    """The program's tree, None while it isn't known to the accessibility bus."""
    result = subprocess.run([sys.executable, str(pathlib.Path(__file__))], env=desktop.environment, timeout=60,
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return json.loads(result.stdout) if result.returncode == 0 and result.stdout else None


def walk(node):
    """The node and all below it."""
    if node is None:
        return
    yield node
    for child in node["children"]:
        yield from walk(child)


def window(desktop, title):
    """The node of the window with that title; None if it isn't there."""
    found = tree(desktop)
    return next((node for node in (found or {"children": []})["children"] if node["name"] == title), None)


def items(desktop, role):
    """The names of all showing nodes of a role."""
    return [node["name"] for node in walk(tree(desktop)) if node["role"] == role and node["showing"]]


if __name__ == "__main__":
    sys.exit(main())
