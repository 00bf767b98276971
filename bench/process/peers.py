"""Other clipboard programs, as far as they can be measured from outside. Their families of processes count whole."""
import sys

import scenes
from programs import peers


def _start(program):
    return scenes.start(program) or {}


def _idle(program):
    return {"pss": scenes.idle(program, None, 10)["pss"]}


def _copies(program):
    figures = scenes.texts(program, 20)
    return {"copies read": figures["read"], "copies cpu": figures["cpu"]}


def _full(program):
    figures = scenes.texts(program, 32000)
    # A list that lacks texts can't be compared.
    return {"full pss": figures["pss"], "full cpu": figures["cpu"]} if figures["read"] == 100 else {}


def _hang(program):
    figures = scenes.after_hang(program, 3)
    return {"hang": figures["median"]} if figures else {}


def _large(program):
    figures = scenes.large(program)
    return {} if figures["read"] is None else {"large peak": figures["peak"], "large stays": figures["stays"]}


def measure_peers():
    """Figures by program and name; a program without a figure did not manage that."""
    result = {}
    for program in peers():
        if not program.there():
            print(f"{program.name}: not installed, skipped")
            continue
        figures = {}
        for measure in (_start, _idle, _copies, _full, _hang, _large):
            try:
                figures.update(measure(program))
            except (RuntimeError, OSError) as error:
                print(f"{program.name}: {measure.__name__[1:]} left out: {str(error).strip().splitlines()[0]}")
            if "icon" not in figures:
                print(f"{program.name}: no icon in the tray, skipped")
                break
        if "icon" not in figures:
            continue
        # Who holds a hundred texts of 32000 characters has grown by their 3 MiB at least.
        if figures.get("full pss", 0) - figures.get("pss", 0) < 3:
            figures.pop("full pss", None)
            figures.pop("full cpu", None)
        result[program.name] = figures
        print(f"{program.name}: " + ", ".join(f"{name} {value:.4g}" for name, value in figures.items()))
        sys.stdout.flush()
    return result


def best(figures, name, form, largest=False):
    """The best of the peers in one row, for the column beside ours."""
    values = sorted(((each[name], program) for program, each in figures.items() if name in each), reverse=largest)
    return f"; {values[0][1]} {form(values[0][0])}" if values else ""
