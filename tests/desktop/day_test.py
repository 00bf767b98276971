#!/usr/bin/env python3
"""A day with the program, as ./run shows it on a machine without a display."""
import unittest

from day import Session
from desktop import Desktop, PICTURES


class ADay(unittest.TestCase):
    def test_from_the_first_start_to_the_end(self):
        with Desktop() as screen:
            Session(screen, PICTURES / "day").run()


if __name__ == "__main__":
    unittest.main()
