"""How long 1000 characters take to be typed into a window, by us and by xdotool."""
import os
import subprocess
import time

import desktop as desktops
from table import milliseconds

SENTENCE = "The quick brown fox jumps over the lazy dog, 1234567890. "
TEXT = (SENTENCE * 20)[:1000]


def _typed(receiver_file):
    return receiver_file.read_text() if receiver_file.exists() else ""


def _measure(desktop, command):
    """The least of three: seconds until a window that answers pings has received all of it."""
    taken = []
    for number in range(3):
        file = desktop.folder / f"typed-{number}-{os.path.basename(command[0])}"
        receiver = desktop.start(os.environ["QUILLBOX_RECEIVER"], file)
        time.sleep(0.7)
        begin = time.monotonic()
        subprocess.run(command, env=desktop.environment, check=True, timeout=60)
        sent = time.monotonic() - begin
        desktops.wait_for("all keys", lambda: _typed(file) == TEXT, 10)
        taken.append(sent)
        desktop.end(receiver)
    return min(taken)


def rows(table):
    with desktops.Desktop(window_manager=False, panel=False, bus=False) as desktop:
        ours = _measure(desktop, [os.environ["QUILLBOX_KEYS"], TEXT])
        theirs = _measure(desktop, ["xdotool", "type", TEXT])
        table.add("script of 1000 characters", "1000 ms", milliseconds(ours), ours < 1.0,
                  f"`xdotool type` {milliseconds(theirs)}, {theirs / ours:.0f} times as long")
