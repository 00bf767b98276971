"""Measures everything and prints one table; exit code 1 if a target is missed."""
import argparse
import pathlib
import sys

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "tests" / "desktop"))

import keys
import parts
import quillbox
import soak
import wayland
from table import Table


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--no-peers", action="store_true", help="leave the other programs out")
    arguments.add_argument("--quick", action="store_true", help="10 s instead of 60 s at rest")
    arguments.add_argument("--only", choices=("process", "wayland", "soak", "keys", "parts"))
    options = arguments.parse_args()
    table = Table()
    if options.only in (None, "process"):
        quillbox.rows(table, not options.no_peers, 10 if options.quick else 60)
    if options.only in (None, "wayland"):
        wayland.rows(table, not options.no_peers, 10 if options.quick else 60)
    if options.only in (None, "soak"):
        soak.rows(table)
    if options.only in (None, "keys"):
        keys.rows(table)
    if options.only in (None, "parts"):
        parts.rows(table)
    print("\n" + table.markdown())
    missed = table.missed()
    print("missed: " + ", ".join(missed) if missed else "all targets are met")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
