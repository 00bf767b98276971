"""What the kernel tells of a process: memory, processor time, wake-ups."""
import pathlib


def _number(path, name):
    for line in pathlib.Path(path).read_text().splitlines():
        if line.startswith(name + ":"):
            return int(line.split()[1])
    raise KeyError(name)


def pss(process):
    """Its share of the memory in use, in MiB."""
    return _number(f"/proc/{process}/smaps_rollup", "Pss") / 1024


def rss(process):
    return _number(f"/proc/{process}/status", "VmRSS") / 1024


def reset_peak(process):
    pathlib.Path(f"/proc/{process}/clear_refs").write_text("5")


def peak(process):
    """The most resident memory since `reset_peak`, in MiB."""
    return _number(f"/proc/{process}/status", "VmHWM") / 1024


def _tasks(process):
    return list(pathlib.Path(f"/proc/{process}/task").iterdir())


def cpu(process):
    """User and system time of its living threads, in seconds, to the nanosecond."""
    total = 0
    for task in _tasks(process):
        total += int((task / "schedstat").read_text().split()[0])
    return total / 1e9


def wakeups(process):
    """How often its threads went to sleep or gave way so far."""
    return sum(
        _number(task / "status", "voluntary_ctxt_switches") + _number(task / "status", "nonvoluntary_ctxt_switches")
        for task in _tasks(process))


def libraries(process):
    """Names of the libraries that it has mapped."""
    maps = pathlib.Path(f"/proc/{process}/maps").read_text().splitlines()
    return sorted({line.split("/")[-1] for line in maps if ".so" in line})
