"""Other clipboard programs, as far as they can be measured from outside. Their families of processes count whole."""
import sys

import scenes
from programs import peers


def _figures(program):
    found = {}
    start = scenes.start(program)
    if start is None:
        return None
    found.update(start)
    found["pss"] = scenes.idle(program, None, 10)["pss"]
    small = scenes.texts(program, 20)
    found["copies read"], found["copies cpu"] = small["read"], small["cpu"]
    full = scenes.texts(program, 32000)
    if full["read"] == 100:  # a list that lacks texts can't be compared
        found["full pss"] = full["pss"]
    hang = scenes.after_hang(program, 3)
    if hang:
        found["hang"] = hang["median"]
    large = scenes.large(program)
    if large["read"] is not None:
        found["large peak"], found["large stays"] = large["peak"], large["stays"]
    return found


def measure_peers():
    """Figures by program and name; a program without a figure did not manage that."""
    result = {}
    for program in peers():
        if not program.there():
            print(f"{program.name}: not installed, skipped")
            continue
        try:
            figures = _figures(program)
        except (RuntimeError, OSError) as error:
            print(f"{program.name}: skipped: {str(error).strip().splitlines()[0]}")
            continue
        if figures is None:
            print(f"{program.name}: no icon in the tray, skipped")
            continue
        result[program.name] = figures
        print(f"{program.name}: " + ", ".join(f"{name} {value:.4g}" for name, value in figures.items()))
        sys.stdout.flush()
    return result


def best(figures, name, form, largest=False):
    """The best of the peers in one row, for the column beside ours."""
    values = sorted(((each[name], program) for program, each in figures.items() if name in each), reverse=largest)
    return f"; {values[0][1]} {form(values[0][0])}" if values else ""
