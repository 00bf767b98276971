"""The clipboard of a Wayland session, on sway without a screen: the program beside the peers that there are for it."""
import json
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "wayland"))

import processes
from programs import Program, quillbox
from sway import Sway

COPIES = 100
APART = 0.05
PATIENCE = 20.0  # seconds; who hasn't a text by then doesn't get it
KLIPPER = ("busctl", "--user", "call", "org.kde.klipper", "/klipper", "org.kde.klipper.klipper",
           "getClipboardHistoryMenu")
HISTORIES = (".qbx", ".json", ".dat", ".lst")
OWNER = os.environ.get("QUILLBOX_WAYLAND_OWNER", "")


def _stored(desktop, name):
    path = desktop.folder / name
    return path.read_text(errors="replace") if path.exists() else ""


def peers():
    # The first argument of each is looked for; the files are where the session's folder is.
    return [
        Program("clipman", ["clipman"], count=lambda d: len(json.loads(_stored(d, "clipman.json") or "[]"))),
        Program("wl-paste --watch", ["wl-paste"], count=lambda d: _stored(d, "watched").count("\n")),
        Program("CopyQ", ["copyq"], count=lambda d: int(_answer(d, "copyq", "size") or 0)),
        Program("Klipper", ["klipper"], count=lambda d: int((_answer(d, *KLIPPER) or "as 0").split()[1])),
    ]


def _answer(desktop, *command):
    return subprocess.run(command, env=desktop.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True, timeout=20, check=False).stdout


def _start(program, desktop):
    watch = ["wl-paste", "--type", "text", "--watch"]
    if program.name == "clipman":
        return desktop.start(*watch, "clipman", "store", "--max-items=500", f"--histpath={desktop.folder}/clipman.json")
    if program.name == "wl-paste --watch":
        return desktop.start(*watch, "sh", "-c", f"cat >>{desktop.folder}/watched; echo >>{desktop.folder}/watched")
    return program.start(desktop)


class Scene:
    def __init__(self, program):
        self.program, self.desktop = program, Sway()
        if program.name in ("CopyQ", "Klipper"):
            self.desktop.environment["QT_QPA_PLATFORM"] = "wayland"  # of Qt 5, which looks for an X server first
            (self.desktop.folder / "config" / "klipperrc").write_text("[General]\nMaxClipItems=500\n")
        self.process = _start(program, self.desktop)
        time.sleep(3)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.desktop.close()

    def count(self):
        return self.program.count(self.desktop)

    def copy(self, text):
        return self.desktop.start("wl-copy", "--foreground", text)

    def taken(self, text):
        """Seconds until a copy is one more entry, None if it never is."""
        before, begin = self.count(), time.monotonic()
        self.copy(text)
        while self.count() <= before:
            if time.monotonic() - begin > PATIENCE:
                return None
            time.sleep(0.001)
        return time.monotonic() - begin


def measure(program, rest):
    """Figures by name; one that a program did not manage is None."""
    figures = {}
    with Scene(program) as scene:
        pid = scene.process.pid
        cpu = processes.cpu(pid)
        for number in range(COPIES):
            scene.copy(f"copy {number}")
            time.sleep(APART)
        time.sleep(3)
        figures["cpu"] = processes.cpu(pid) - cpu
        figures["copies"] = scene.count()
    with Scene(program) as scene:
        times = []
        while len(times) < 20 and None not in times:  # who misses one isn't waited for twenty times
            times.append(scene.taken(f"timed {len(times)}"))
        figures["taken"] = None if None in times else statistics.median(times)
        silent = scene.copy("never handed over")
        silent.send_signal(signal.SIGSTOP)
        time.sleep(1)
        figures["hang"] = scene.taken("after the silent one")
        scene.desktop.start(OWNER, "x-kde-passwordManagerHint", "secret", "text/plain;charset=utf-8", "PassWord")
        time.sleep(2)
        figures["secret"] = not any("PassWord" in path.read_text(errors="replace")
                                    for path in scene.desktop.folder.rglob("*")
                                    if path.is_file() and path.suffix in HISTORIES or path.name == "watched")
        long = scene.desktop.folder / "long.txt"
        long.write_text("0123456789" * 500_000)
        scene.desktop.start("sh", "-c", f"exec wl-copy --foreground --type text/plain <{long}")
        time.sleep(3)
        switches = processes.wakeups(scene.process.pid)
        time.sleep(rest)
        figures["wakeups"] = processes.wakeups(scene.process.pid) - switches
        processes.reset_peak(scene.process.pid)
        long.write_text("0123456789" * 5_000_000)
        scene.desktop.start("sh", "-c", f"exec wl-copy --foreground --type text/plain <{long}")
        time.sleep(5)
        figures["peak"] = processes.peak(scene.process.pid)
        figures["after"] = scene.taken("after fifty million bytes")
    return figures


def rows(table, with_peers, rest):
    ours = measure(quillbox(), rest)
    others = {each.name: measure(each, rest) for each in peers() if with_peers and each.there()}

    def beside(name, form):
        return "; ".join(f"{program} {form(each[name])}" for program, each in others.items())

    def add(row, target, name, form, met):
        table.add(f"Wayland: {row}", target, form(ours[name]), met(ours[name]), beside(name, form))

    def seconds(value):
        return "never" if value is None else f"{value * 1000:.0f} ms"

    add(f"{COPIES} copies, {APART * 1000:.0f} ms apart, in the list", str(COPIES), "copies", str, lambda v: v == COPIES)
    add(f"processor time of {COPIES} copies", "", "cpu", lambda v: f"{v:.2f} s", lambda _: None)
    add("copy to entry on the disk, median", "500 ms", "taken", seconds, lambda v: v is not None and v < 0.5)
    add("a copy after an owner that never answers", "500 ms", "hang", seconds, lambda v: v is not None and v < 0.5)
    add(f"wake-ups in {rest} s at rest, 5 MB held", "0", "wakeups", str, lambda v: v == 0)
    add("50 MB copied: memory at most", "", "peak", lambda v: f"{v:.0f} MiB", lambda _: None)
    add("a copy after it", "500 ms", "after", seconds, lambda v: v is not None and v < 0.5)
    add("a marked secret is kept out of the files", "yes", "secret", lambda v: "yes" if v else "no", bool)
