"""The rows of the whole program, and of its peers beside it, in one run."""
import scenes
from finding import finding
from peers import best, measure_peers
from programs import bare, copyq, quillbox
from table import mebibytes, milliseconds


def rows(table, with_peers=True, idle_seconds=scenes.IDLE_SECONDS):
    program = quillbox()
    peers = measure_peers() if with_peers else {}

    start, toolkit = scenes.start(program), scenes.start(bare())
    beside = f"bare Qt icon {milliseconds(toolkit['icon'])}, {start['icon'] / toolkit['icon']:.2f} times"
    table.add("start to icon in the tray", "40 ms", milliseconds(start["icon"]), start["icon"] <= 0.04,
              beside + best(peers, "icon", milliseconds))
    table.add("CPU until then", "30 ms", milliseconds(start["cpu"]), start["cpu"] <= 0.03,
              f"bare Qt icon {milliseconds(toolkit['cpu'])}" + best(peers, "cpu", milliseconds))

    idle = scenes.idle(program, None, idle_seconds)
    table.add("PSS, empty lists", "21 MiB", mebibytes(idle["pss"]), idle["pss"] <= 21,
              f"RSS {mebibytes(idle['rss'])}" + best(peers, "pss", mebibytes))
    table.add(f"wake-ups in {idle_seconds} s, hidden, clipboard empty", "0", str(idle["wakeups"]), idle["wakeups"] == 0)
    table.add("memory that no file backs, empty lists", "3 MiB", mebibytes(idle["memory"]), idle["memory"] <= 3)
    idle = scenes.idle(program, "x" * 5_000_000, idle_seconds)
    table.add(f"wake-ups in {idle_seconds} s, hidden, 5 MB on the clipboard", "0", str(idle["wakeups"]),
              idle["wakeups"] == 0)

    small, long = scenes.texts(program, 20), scenes.texts(program, 32000)
    table.add("entries after 100 copies, 50 ms apart", "100", str(small["entries"]), small["entries"] == 100,
              best(peers, "copies read", "{} read".format, largest=True))
    table.add("CPU of those copies", "100 ms", milliseconds(small["cpu"]), small["cpu"] <= 0.1,
              best(peers, "copies cpu", milliseconds))
    table.add("PSS, 100 texts of 32000 characters", "33 MiB", mebibytes(long["pss"]),
              long["pss"] <= 33 and long["entries"] == 100, best(peers, "full pss", mebibytes))

    table.add("memory that no file backs, 100 texts of 32000 characters", "6 MiB", mebibytes(long["memory"]), long["memory"] <= 6)
    table.add("CPU of 100 copies of 32000 characters, 50 ms apart", "350 ms", milliseconds(long["cpu"]), long["cpu"] <= 0.35,
              best(peers, "full cpu", milliseconds))

    disk = scenes.on_disk(program)
    table.add("copy to disk, median of 40", "10 ms", milliseconds(disk["median"]), disk["median"] <= 0.01,
              f"most {milliseconds(disk['most'])}")
    hang = scenes.after_hang(program)
    table.add("copy after a hanging owner", "20 ms", milliseconds(hang["median"]), hang["median"] < 0.02,
              best(peers, "hang", milliseconds))
    stop = scenes.stops(program)
    table.add("longest stop of the window, owners at their worst", "50 ms", milliseconds(stop), stop <= 0.05,
              "one hangs, one hands over 50 MB, 200 changes a second")
    large = scenes.large(program)
    table.add("peak RSS of a copy of 50 MB", "120 MiB", mebibytes(large["peak"]), large["peak"] <= 120,
              best(peers, "large peak", mebibytes))
    table.add("stays after the next text", "2 MiB", mebibytes(large["stays"]), large["stays"] <= 2,
              best(peers, "large stays", mebibytes))

    key = scenes.key(quillbox(ShowKey="Ctrl+Alt+V"))
    table.add("key to focus in the window, first", "150 ms", milliseconds(key["first"]), key["first"] <= 0.15)
    table.add("key to focus in the window, later", "50 ms", milliseconds(key["later"]), key["later"] <= 0.05)

    finders = [quillbox(ShowKey="Ctrl+Alt+V", PastePick="1")] + (copyq() if with_peers else [])
    found = []
    for each in finders:
        opened, entered, whole, right = finding(each)
        found.append(f"{each.name}: window {milliseconds(opened)}, Enter to text {milliseconds(entered)}, "
                     f"in all {milliseconds(whole)}, {right} of 5 right")
    table.add("an old entry of 100 found and pasted: key, 4 letters, Enter", "the right one", found[0],
              found[0].endswith("5 of 5 right"), "; ".join(found[1:]))

    menu = scenes.menu(program)
    table.add("press to menu, first", "20 ms", milliseconds(menu["first median"]), menu["first median"] <= 0.02,
              f"least {milliseconds(menu['first'])}")
    table.add("press to menu, later", "20 ms", milliseconds(menu["later"]), menu["later"] <= 0.02)
