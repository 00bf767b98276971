#!/usr/bin/env python3
"""Measures from outside how long a program's event loop stands still: ping.py WINDOW, until its input ends.

Sends the window manager's question whether a window is alive, again and again, and takes the time to each answer.
A client of our own is asked at the same time; by how much that one is late is the machine's fault and not counted.
Prints one line of JSON: samples, and the worst delay in milliseconds.
"""
import json
import os
import select
import sys
import time

import Xlib.display
from Xlib import X
from Xlib.protocol import event

PERIOD = 0.007  # seconds between questions


class Asked:
    """A window, and the question that it has not answered yet."""

    def __init__(self, window):
        self.window, self.sent, self.number = window, None, 0
        self.late = []  # when sent, how long it took


def question(display, window, number, protocols, ping):
    return event.ClientMessage(window=window, client_type=protocols, data=(32, [ping, number, window.id, 0, 0]))


def echo(write):
    """The client to compare with: answers as every client does."""
    display = Xlib.display.Display()
    root = display.screen().root
    window = root.create_window(0, 0, 10, 10, 0, X.CopyFromParent)
    display.sync()
    os.write(write, b"%d\n" % window.id)
    while True:
        message = display.next_event()
        if message.type == X.ClientMessage:
            answer = event.ClientMessage(window=root, client_type=message.client_type, data=(32, message.data[1]))
            root.send_event(answer, X.SubstructureNotifyMask | X.SubstructureRedirectMask)
            display.flush()


def measure(target, comparison):
    display = Xlib.display.Display()
    root = display.screen().root
    # Toolkits differ in whom they send the answer to.
    root.change_attributes(event_mask=X.SubstructureNotifyMask | X.StructureNotifyMask)
    protocols, ping = (display.intern_atom(name) for name in ("WM_PROTOCOLS", "_NET_WM_PING"))
    asked = {window: Asked(display.create_resource_object("window", window)) for window in (target, comparison)}
    start = time.monotonic()
    while True:
        now = time.monotonic()
        for window, one in asked.items():
            if one.sent is None:
                one.number += 1
                one.sent = now
                one.window.send_event(question(display, one.window, one.number, protocols, ping), 0)
        display.flush()
        end = now + PERIOD
        while (left := end - time.monotonic()) > 0:
            ready = select.select([display.fileno(), sys.stdin], [], [], left)[0]
            if sys.stdin in ready and not os.read(0, 100):
                return report(asked[target], asked[comparison], time.monotonic() - start)
            while display.pending_events():
                message = display.next_event()
                if message.type != X.ClientMessage or message.client_type != protocols:
                    continue
                values = message.data[1]
                one = asked.get(values[2])
                if values[0] == ping and one and one.sent is not None and values[1] == one.number:
                    one.late.append((one.sent, time.monotonic() - one.sent))
                    one.sent = None


def report(one, other, seconds):
    end = time.monotonic()
    for waiting in (one, other):
        if waiting.sent is not None:
            waiting.late.append((waiting.sent, end - waiting.sent))
    worst = 0.0
    for sent, late in one.late:
        noise = max((delay for at, delay in other.late if at < sent + late and at + delay > sent), default=0.0)
        worst = max(worst, late - noise)
    return {"samples": len(one.late), "seconds": round(seconds, 2), "worst": round(worst * 1000, 1),
            "noise": round(max((delay for _, delay in other.late), default=0) * 1000, 1)}


def main():
    read, write = os.pipe()
    child = os.fork()
    if child == 0:
        try:
            echo(write)
        finally:
            os._exit(1)
    try:
        comparison = int(os.read(read, 100))
        print("ready", flush=True)
        print(json.dumps(measure(int(sys.argv[1], 0), comparison)), flush=True)
    finally:
        os.kill(child, 9)
        os.waitpid(child, 0)


if __name__ == "__main__":
    main()
