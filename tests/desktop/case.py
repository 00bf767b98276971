"""What the tests on a desktop have in common."""
import contextlib
import json
import pathlib
import subprocess
import sys
import time
import unittest

import datafiles
from desktop import Desktop, wait_for

TRIES = 3  # of a measurement; a busy machine may spoil one or two


class DesktopCase(unittest.TestCase):
    """A test with a desktop of its own; `DESKTOP` holds the arguments, `SETTINGS` those of the program."""

    DESKTOP = {}
    SETTINGS = {}

    def setUp(self):
        self.desktop = Desktop(**self.DESKTOP)
        self.addCleanup(self.desktop.close)
        if self.SETTINGS is not None:
            self.desktop.settings(**self.SETTINGS)

    def _callTestMethod(self, method):
        try:
            return super()._callTestMethod(method)
        except AssertionError:
            self.show_failure()
            raise

    def show_failure(self):
        name = f"failed-{type(self).__name__}-{self._testMethodName}"
        if self.desktop.display:
            with contextlib.suppress(subprocess.SubprocessError):
                print("picture:", self.desktop.picture(name), file=sys.stderr)
        print("quillbox said:", self.desktop.log("quillbox"), file=sys.stderr)

    def newest_becomes(self, text, seconds=15):
        """Waits until `text` is the newest entry on the disk."""
        try:
            wait_for(f"{text[:60]!r} as newest entry", lambda: datafiles.newest(self.desktop) == text, seconds)
        except AssertionError as error:
            found = datafiles.newest(self.desktop)
            raise AssertionError(f"{error}; it is {found and found[:60]!r}") from None

    def next_copy_is_taken(self, seconds=15):
        """A normal copy, as by any program, reaches the list."""
        text = f"normal copy {time.monotonic_ns()}"
        self.desktop.copy(text)
        self.newest_becomes(text, seconds)

    @contextlib.contextmanager
    def answering(self, window, report):
        """Asks the window all the time; what was measured is put into the dict `report`."""
        process = subprocess.Popen(
            [sys.executable, str(pathlib.Path(__file__).with_name("ping.py")), str(window.id)],
            env=self.desktop.environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        try:
            self.assertEqual("ready\n", process.stdout.readline())
            yield
            process.stdin.close()
            report.update(json.loads(process.stdout.readline()))
        finally:
            process.stdout.close()
            with contextlib.suppress(OSError):
                process.stdin.close()
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(10)
            process.kill()
            process.wait()

    def measured(self, what, measure, limit):
        """Runs `measure()`, which returns a number, until it stays below the limit; three times at most."""
        found = []
        for _ in range(TRIES):
            found.append(measure())
            if found[-1] <= limit:
                return
        self.fail(f"{what}: {found}, allowed are {limit}")

    def show_timer_page(self):
        """The window with its clock running."""
        window = self.desktop.show_window()
        self.desktop.xdotool("windowactivate", "--sync", window.id)
        for _ in range(3):
            self.desktop.key("ctrl+Tab")
        time.sleep(0.5)
        return window
