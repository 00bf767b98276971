"""The rows of the parts, from the benchmark program run on an X server of its own."""
import json
import os
import subprocess
import sys

import desktop as desktops


def _run():
    with desktops.Desktop(panel=False, window_manager=False, bus=False) as desktop:
        done = subprocess.run(
            [os.environ["QUILLBOX_BENCH"], "--benchmark_format=json", "--benchmark_min_time=0.2"],
            env=desktop.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=600)
    if done.returncode != 0:
        sys.exit(done.stderr.decode())
    found = {}
    for each in json.loads(done.stdout)["benchmarks"]:
        if each.get("error_occurred"):
            sys.exit(f"{each['name']}: {each['error_message']}")
        # What a part costs is its processor time: the wall clock of a busy machine tells of its neighbours.
        found[each["name"].split("/iterations")[0].removesuffix("/manual_time")] = each
    return found


def rows(table):
    found = _run()

    def cpu(name):
        return found[name]["cpu_time"]  # nanoseconds

    def counter(name, which):
        return found[name][which]

    def beside(name, what, target):
        each = found[name]
        table.add(what, f"{target} times", f"{each['ours_us']:.0f} µs, {each['ratio']:.2f} times",
                  each["ratio"] <= target, f"bare {each['bare_us']:.0f} µs")

    tick, compare = cpu("ClipTickUnchanged"), cpu("Memcmp")
    free = counter("ClipTickUnchanged", "allocations") < 0.01
    table.add("tick without a change, 32000 characters", "memcmp + 1 µs, no allocation",
              f"{tick / 1000:.2f} µs, {'no' if free else 'SOME'} allocation", tick <= compare + 1000 and free,
              f"memcmp {compare / 1000:.2f} µs")
    read = found["XClipboardRead"]
    quiet = read["allocations"] == 0 and read["answers"] == 0
    table.add("reading the unchanged X11 clipboard", "no request, no allocation",
              f"{read['cpu_time']:.1f} ns, {'none' if quiet else 'SOME'}", quiet)
    clock, free = cpu("ClockTickNothingRuns"), counter("ClockTickNothingRuns", "allocations") < 0.01
    table.add("clock tick, nothing runs", "2 µs, no allocation",
              f"{clock / 1000:.2f} µs, {'no' if free else 'SOME'} allocation", clock < 2000 and free)
    beside("ClipChange/50/100", "tick to file, 50 rows of 100", 3)
    beside("ClipChange/100/32000", "tick to file, 100 rows of 32000", 1.15)
    beside("ReadClipFile/100/32000", "reading that file", 6)
    slow = counter("ClipChangeOnSlowDisk", "longest_us")
    table.add("longest of 5 changes while a sync takes 5 s", "held up by none", f"{slow / 1000:.1f} ms", slow < 500_000)
    menu = cpu("BuildMenu/32000")
    table.add("both halves of the menu built", "50 µs", f"{menu / 1000:.1f} µs", menu < 50_000)
    keys = [cpu(f"FindKey/{kind}") for kind in range(3)]  # in milliseconds
    table.add("a key in find, 100 entries of 32000 characters", "5 ms", f"{max(keys):.1f} ms", max(keys) < 5,
              "English, accented, Russian: " + ", ".join(f"{each:.1f} ms" for each in keys))
    pick = found["PickFromMenu"]
    beyond = pick["ours_us"] - pick["bare_us"]
    table.add("pick to clipboard, beyond the file's write", "5 ms", f"{beyond / 1000:.2f} ms", beyond <= 5000)
    delete, writes = found["DeleteAllButOne"]["real_time"] / 1e6, counter("DeleteAllButOne", "writes")
    table.add("delete of 99 of 100 rows", "10 ms, 1 write", f"{delete:.2f} ms, {writes:g} write",
              delete < 10 and writes == 1)
    beside("SaveTasks", "100 tasks saved", 3)
    table.add("calculator key", "20 µs", f"{cpu('CalcKey') / 1000:.2f} µs", cpu("CalcKey") < 20_000)
    for name, other, what in (("NumberToText", "NumberToTextStd", "number to text"),
                              ("TextToNumber", "TextToNumberC", "text to number")):
        table.add(what, "1 µs", f"{cpu(name):.0f} ns", cpu(name) < 1000,
                  f"{'std::to_chars' if other.endswith('Std') else 'strtod'} {cpu(other):.0f} ns")
