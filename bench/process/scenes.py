"""What is measured from outside, the same for every program."""
import json
import pathlib
import statistics
import subprocess
import sys
import time

import desktop as desktops
import processes
from owners import Owner, wait_served
from person import Person
from trays import Tray

STARTS = 7
IDLE_SECONDS = 60
TOOLKITS = ("libQt6Gui", "libQt5Gui", "libgtk-3", "libgtk-x11")


class Scene:
    """A desktop with a tray of ours and one program on it."""

    def __init__(self, program):
        self.program = program
        self.desktop = desktops.Desktop(panel=False)
        self.tray = Tray(self.desktop.name)
        self.process = None
        self.started = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.tray.close()
        self.desktop.close()

    def start(self, seconds=10):
        """Starts the program; seconds until its icon is in the tray, None if none comes."""
        begin = time.monotonic()
        self.process = self.program.start(self.desktop)
        shown = self.tray.await_icon(seconds)
        self.started = None if shown is None else shown - begin
        return self.started

    def stop(self):
        self.desktop.end(self.process)
        time.sleep(0.2)

    @property
    def pid(self):
        return self.process.pid

    def settle(self, seconds=1.5):
        time.sleep(seconds)
        if self.process.poll() is not None:
            raise RuntimeError(f"{self.program.name} has ended:\n" + self.desktop.log(self.program.command[0]))

    def highest_pss(self, seconds):
        """Pages shared with other programs of the toolkit count in part: the highest of many samples is the truest.

        While such a program runs it goes on for up to a minute more.
        """
        now = time.monotonic()
        end, latest = now + seconds, now + seconds + 60
        best, alone = 0, False
        while time.monotonic() < end or (not alone and time.monotonic() < latest):
            best = max(best, processes.pss(self.pid))
            alone = alone or not processes.others_with(TOOLKITS, self.pid)
            time.sleep(0.5)
        if not alone:
            print("another program of the toolkit ran all the time: this PSS is too low", file=sys.stderr)
        return best


def start(program):
    """Seconds to the icon and seconds of processor time until then: the least of several starts each."""
    times, cpu = [], []
    with Scene(program) as scene:
        for _ in range(STARTS):
            if scene.start() is None:
                return None
            cpu.append(processes.cpu(scene.pid))
            times.append(scene.started)
            scene.settle(0.3)
            scene.stop()
    return {"icon": min(times), "cpu": min(cpu)}


def idle(program, clipboard=None, seconds=IDLE_SECONDS):
    """Wake-ups of all threads in the seconds, and the PSS in MiB, with that text on the clipboard."""
    with Scene(program) as scene:
        owner = Owner(scene.desktop.name)
        if clipboard is not None:
            owner.copy(clipboard)
        scene.start()
        scene.settle(3)
        before = processes.wakeups(scene.pid)
        time.sleep(seconds)
        wakeups = processes.wakeups(scene.pid) - before
        result = {"wakeups": wakeups, "pss": scene.highest_pss(5), "rss": processes.rss(scene.pid),
                  "memory": processes.holds(scene.pid)["memory"]}
        owner.close()
        return result


def texts(program, length, count=100, interval=0.05):
    """Copies `count` texts: processor time for them, PSS afterwards; how many of them the program has read."""
    with Scene(program) as scene:
        owner = Owner(scene.desktop.name)
        scene.start()
        scene.settle()
        before = processes.cpu(scene.pid)
        read = 0
        for number in range(count):
            owner.copy(f"{number:5}".ljust(length, "x"))
            time.sleep(interval)
            read += bool(owner.served)
        time.sleep(0.5)
        result = {"cpu": processes.cpu(scene.pid) - before, "read": read}
        scene.settle(2)
        result["pss"], result["memory"] = scene.highest_pss(5), processes.holds(scene.pid)["memory"]
        owner.close()
        result["entries"] = program.count(scene.desktop) if program.count else None
        return result


def on_disk(program, rounds=40):
    """Copies of 40 characters: seconds until they stand in the file of the list."""
    with Scene(program) as scene:
        owner = Owner(scene.desktop.name)
        scene.start()
        scene.settle()
        path = scene.desktop.data / "ClipData.qbx"
        taken = []
        for number in range(rounds):
            text = f"to the disk {number:3}".ljust(40, ".").encode()
            owner.copy(text)
            begin = time.monotonic()
            while text not in path.read_bytes():
                if time.monotonic() - begin > 5:
                    raise RuntimeError("a copy did not reach the disk")
                time.sleep(0.0003)  # the owner answers on a thread of this process
            taken.append(time.monotonic() - begin)
            time.sleep(0.05)
        owner.close()
        return {"least": min(taken), "median": statistics.median(taken), "most": max(taken)}


def menu(program, starts=5, openings=4):
    """Seconds from the press on the icon to the menu on the screen: the first of a start, and later ones."""
    first, later = [], []
    with Scene(program) as scene:
        for _ in range(starts):
            scene.start()
            scene.settle()
            first.append(scene.tray.menu_time())
            later += [scene.tray.menu_time() for _ in range(openings)]
            scene.stop()
    if None in first + later:
        raise RuntimeError(f"the menu of {program.name} did not come up: {first} {later}")
    return {"first": min(first), "first median": statistics.median(first), "later": statistics.median(later)}


def key(program, starts=5, openings=4):
    """Seconds from the key that opens the window to the keyboard's focus in it: the first of a start, and later ones."""
    first, later = [], []
    with Scene(program) as scene:
        for _ in range(starts):
            scene.start()
            scene.settle()
            first.append(scene.tray.key_time())
            later += [scene.tray.key_time() for _ in range(openings)]
            scene.stop()
    return {"first": statistics.median(first), "later": statistics.median(later)}


def after_hang(program, rounds=5):
    """An owner hangs, another program copies a second later: seconds until that text has been read."""
    with Scene(program) as scene:
        scene.start()
        scene.settle()
        hanging, healthy = Owner(scene.desktop.name, hangs=True), Owner(scene.desktop.name)
        taken = []
        for number in range(rounds):
            hanging.copy("never given")
            time.sleep(1)
            healthy.copy(f"after the hang {number}")
            taken.append(wait_served(healthy, 20))
        hanging.close()
        healthy.close()
        return None if None in taken else {"least": min(taken), "median": statistics.median(taken)}


def large(program, size=50_000_000):
    """One copy of `size` bytes: the peak of resident memory in MiB, and what stays when the next text has come."""
    with Scene(program) as scene:
        owner = Owner(scene.desktop.name)
        scene.start()
        scene.settle()
        owner.copy("before")
        scene.settle()
        before = processes.rss(scene.pid)
        processes.reset_peak(scene.pid)
        owner.copy(b"x" * size)
        read = wait_served(owner, 30)
        scene.settle(2)
        peak = processes.peak(scene.pid)
        owner.copy("next")
        scene.settle(2)
        result = {"peak": peak, "stays": processes.rss(scene.pid) - before, "read": read}
        owner.close()
        return result


def stops(program, seconds=3):
    """The longest stop of the window, in seconds, beyond what the machine is late itself: while an owner hangs, while
    one hands over 50 MB, and while the clipboard changes 200 times a second."""
    with Scene(program) as scene:
        scene.start()
        Person(scene).press_icon(1)
        window = desktops.wait_for("the window", lambda: scene.desktop.window("Quillbox"))
        scene.settle()
        hanging, healthy = Owner(scene.desktop.name, hangs=True), Owner(scene.desktop.name)
        asking = subprocess.Popen([sys.executable, str(pathlib.Path(__file__).with_name("ping.py")), str(window.id)],
                                  env=scene.desktop.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        try:
            if asking.stdout.readline() != "ready\n":
                raise RuntimeError("the window could not be asked")
            hanging.copy("never given")
            time.sleep(seconds)
            healthy.copy(b"x" * 50_000_000)
            wait_served(healthy, 30)
            for number in range(200 * seconds):
                healthy.copy(f"change {number}")
                time.sleep(0.005)
            asking.stdin.close()
            return json.loads(asking.stdout.readline())["worst"] / 1000
        finally:
            asking.kill()
            asking.wait()
            hanging.close()
            healthy.close()
