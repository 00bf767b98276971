"""One table of all rows: printed as they come, and written down as Markdown at the end."""
import sys


class Table:
    def __init__(self):
        self.rows = []

    def add(self, name, target, measured, met, beside=""):
        """A row; `met` says whether the target is met, None where there is none."""
        beside = beside.removeprefix("; ")
        self.rows.append((name, target, measured, {True: "yes", False: "NO", None: ""}[met], beside))
        print(f"{name}: {measured}" + (f" (target {target})" if target else "") + ("" if met is not False else " MISSED")
              + (f"; {beside}" if beside else ""))
        sys.stdout.flush()

    def missed(self):
        return [row[0] for row in self.rows if row[3] == "NO"]

    def markdown(self):
        lines = ["| What | Target | Measured | Met | Beside it |", "|---|---|---|---|---|"]
        return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in self.rows]) + "\n"


def milliseconds(seconds, digits=1):
    return f"{seconds * 1000:.{digits}f} ms"


def mebibytes(amount):
    return f"{amount:.1f} MiB"
