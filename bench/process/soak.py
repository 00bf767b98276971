"""The whole program through a busy day's work in a few minutes: does it hold more at the end than after a tenth?"""
import contextlib
import os
import sys
import time

import processes
import xresources
from day import TENTH, Day, prepare
from person import Person
from programs import Program
from scenes import Scene

TENTHS = 10
# MiB. After the first tenth the list has been filled once, in a heap without holes. From the second one on readings lay
# within 0.7 of each other, and 0.3 to 1.0 above the first. What is lost 800 bytes a copy or 20 KiB a dialog is seen.
TOLERANCE = 1.5


def _reading(scene):
    """What the program holds, at rest."""
    scene.settle(3)
    return {**processes.holds(scene.pid), "server": xresources.count(scene.desktop.display, scene.pid)}


def soak(tenths=TENTHS):
    """What the program holds after each tenth, and how often each kind of work was done."""
    with Scene(Program("Quillbox", [os.environ["QUILLBOX"]], prepare)) as scene:
        if scene.start() is None:
            raise RuntimeError("no icon in the tray")
        scene.settle()
        readings = []
        with contextlib.closing(Day(scene, Person(scene))) as day:
            for tenth in range(tenths):
                begin = time.monotonic()
                day.tenth()
                taken = time.monotonic() - begin
                readings.append(_reading(scene))
                _tell(f"soak {tenth + 1}/{tenths} in {taken:.0f} s", readings[-1])
        return readings, day.done


def _tell(what, reading):
    amounts = {name: amount for name, amount in reading.items() if name != "server"} | dict(sorted(reading["server"].items()))
    print(what + ": " + ", ".join(f"{name} {amount:.7g}" for name, amount in amounts.items()))
    sys.stdout.flush()


def _more(first, last):
    """What there is more of at the end, in words."""
    return ", ".join(f"{name} {first[name]} to {amount}" for name, amount in sorted(last.items())
                     if amount > first[name]) or "none"


def rows(table):
    begin = time.monotonic()
    readings, done = soak()
    seconds = time.monotonic() - begin
    first, last = readings[0], readings[-1]
    everything = all(done[kind] == TENTHS * count for kind, count in TENTH.items())
    grown = last["memory"] - first["memory"]
    copies = sum(count for kind, count in done.items() if "copy" in kind)
    dialogs = sum(done[kind] for kind in ("settings OK", "settings cancel", "info", "start help"))
    table.add("a day's work in 3 minutes: memory beyond that after its first tenth", f"{TOLERANCE} MiB",
              f"{grown:.1f} MiB", everything and grown <= TOLERANCE,
              f"{first['memory']:.1f} to {last['memory']:.1f} MiB; {copies} copies, {done['pick']} picks, "
              f"{done['menu']} looks into the menu, {dialogs} dialogs, in {seconds:.0f} s")
    more = _more(*({name: each[name] for name in ("descriptors", "threads")} for each in (first, last)))
    table.add("descriptors and threads beyond those", "none", more, more == "none",
              f"{last['descriptors']} and {last['threads']}")
    more = _more(first["server"], last["server"])
    table.add("resources of the X server beyond those", "none", more, more == "none",
              f"{last['server']['WINDOW']} windows, {last['server']['PIXMAP']} pixmaps of "
              f"{last['server']['pixmap bytes'] / 2 ** 20:.1f} MiB on {last['server']['connections']} connections")
