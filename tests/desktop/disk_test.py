#!/usr/bin/env python3
"""A full disk: a message, and nothing is lost."""
import contextlib
import os
import shutil
import subprocess
import unittest

from case import DesktopCase


class Disk(DesktopCase):
    def test_full_disk(self):
        self.desktop.start_program()
        self.copy("one", "two")
        self.assertEqual(0, self.desktop.stop_program())
        kept = shutil.copytree(self.desktop.data, self.desktop.folder / "kept")
        mount = ["mount", "-t", "tmpfs", "-o", "size=64k,mode=700", "tmpfs", self.desktop.data]
        if os.getuid() != 0 or subprocess.run(mount, capture_output=True).returncode != 0:
            self.skipTest("no right to mount a small disk")
        self.addCleanup(subprocess.run, ["umount", "--lazy", self.desktop.data], check=True)
        shutil.copytree(kept, self.desktop.data, dirs_exist_ok=True)
        self.desktop.start_program()
        ballast = self.desktop.data / "ballast"
        with contextlib.suppress(OSError), open(ballast, "wb", buffering=0) as file:
            while True:
                file.write(b"x" * 512)
        self.desktop.copy("while it is full")
        self.leave("Quillbox Message")
        self.pastes("while it is full")
        self.assertEqual(["two", "one"], self.file("Clip")[:2], "the old file is whole")
        ballast.unlink()
        self.copy("after it")
        self.assertEqual(["after it", "while it is full", "two", "one"], self.file("Clip")[:4])
        self.assertEqual(0, self.desktop.stop_program())


if __name__ == "__main__":
    unittest.main()
