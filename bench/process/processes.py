"""What the kernel tells of a program, its child processes included: memory, processor time, wake-ups."""
import os
import pathlib

TICK = os.sysconf("SC_CLK_TCK")


def _number(path, name):
    for line in pathlib.Path(path).read_text().splitlines():
        if line.startswith(name + ":"):
            return int(line.split()[1])
    raise KeyError(name)


def _sum(process, figure):
    """Adds a figure up over the process and its descendants; one that ends meanwhile counts nothing."""
    total = 0
    try:
        total += figure(process)
        for task in pathlib.Path(f"/proc/{process}/task").iterdir():
            for child in (task / "children").read_text().split():
                total += _sum(int(child), figure)
    except (OSError, KeyError):
        pass
    return total


def pss(process):
    """The share of the memory in use, in MiB."""
    return _sum(process, lambda each: _number(f"/proc/{each}/smaps_rollup", "Pss")) / 1024


def rss(process):
    return _sum(process, lambda each: _number(f"/proc/{each}/status", "VmRSS")) / 1024


def reset_peak(process):
    def reset(each):
        pathlib.Path(f"/proc/{each}/clear_refs").write_text("5")
        return 0

    _sum(process, reset)


def peak(process):
    """The most resident memory since `reset_peak`, in MiB."""
    return _sum(process, lambda each: _number(f"/proc/{each}/status", "VmHWM")) / 1024


def _tasks(process):
    return list(pathlib.Path(f"/proc/{process}/task").iterdir())


def cpu(process):
    """User and system time in seconds: of living threads to the nanosecond, of ended children in clock ticks."""

    def used(each):
        running = sum(int((task / "schedstat").read_text().split()[0]) for task in _tasks(each))
        fields = pathlib.Path(f"/proc/{each}/stat").read_text().rpartition(")")[2].split()
        return running / 1e9 + (int(fields[13]) + int(fields[14])) / TICK

    return _sum(process, used)


def wakeups(process):
    """How often the threads went to sleep or were interrupted so far."""

    def switches(each):
        return sum(_number(task / "status", "voluntary_ctxt_switches")
                   + _number(task / "status", "nonvoluntary_ctxt_switches") for task in _tasks(each))

    return _sum(process, switches)


def family(process):
    """The process and its descendants."""
    members = set()

    def note(each):
        members.add(int(each))
        return 0

    _sum(process, note)
    return members


def others_with(libraries, process):
    """Whether a program outside this family has one of the libraries loaded."""
    ours = family(process)
    for each in pathlib.Path("/proc").iterdir():
        if each.name.isdigit() and int(each.name) not in ours:
            try:
                maps = (each / "maps").read_text()
            except OSError:
                continue
            if any(library in maps for library in libraries):
                return True
    return False


def holds(process):
    """What the process alone has: MiB of memory that no file backs, MiB of PSS, descriptors, threads."""
    status = f"/proc/{process}/status"
    return {"memory": (_number(status, "RssAnon") + _number(status, "VmSwap")) / 1024, "pss": pss(process),
            "descriptors": len(list(pathlib.Path(f"/proc/{process}/fd").iterdir())), "threads": len(_tasks(process))}
