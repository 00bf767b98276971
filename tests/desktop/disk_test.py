#!/usr/bin/env python3
"""Folders and files that can't be written or read: a message, and nothing is lost."""
import contextlib
import os
import shutil
import subprocess
import unittest

from case import DesktopCase
from desktop import wait_for

NOBODY = 65534
TITLE = "Quillbox Message"


class Disk(DesktopCase):
    def rest(self, *texts):
        """A start with texts and an end, so that all files are there."""
        self.start()
        self.copy(*texts)
        self.assertEqual(0, self.desktop.stop_program())
        return self.clip.read_bytes()

    def start(self, wait=True):
        self.desktop.start_program(wait)

    @property
    def clip(self):
        return self.desktop.data / "ClipData.qbx"

    def refused_copy(self):
        """A copy whose write fails: the message comes, and the text can be pasted."""
        self.desktop.copy("while it fails")
        self.answer(TITLE)
        self.pastes("while it fails")

    def test_full_disk(self):
        if os.getuid() != 0:
            self.skipTest("only root can mount a small disk")
        self.rest("one", "two")
        kept = self.desktop.folder / "kept"
        shutil.copytree(self.desktop.data, kept)
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k,mode=700", "tmpfs", self.desktop.data],
                          capture_output=True).returncode != 0:
            self.skipTest("no right to mount")
        try:
            for path in kept.iterdir():
                shutil.copy(path, self.desktop.data)
            self.start()
            ballast = self.desktop.data / "ballast"
            with contextlib.suppress(OSError), open(ballast, "wb", buffering=0) as file:
                while True:
                    file.write(b"x" * 512)
            self.refused_copy()
            self.assertEqual(["two", "one"], self.file("Clip")[:2], "the old file is whole")
            ballast.unlink()
            self.copy("after it")
            self.assertEqual(["after it", "while it fails", "two", "one"], self.file("Clip")[:4])
            self.assertEqual(0, self.desktop.stop_program())
        finally:
            self.desktop.stop_program()
            subprocess.run(["umount", self.desktop.data], check=True)


class DiskOfAUser(Disk):
    """Rights matter only to somebody who isn't root."""

    test_full_disk = None

    def setUp(self):
        super().setUp()
        if os.getuid() == 0:
            self.desktop.user = NOBODY
            self.desktop.settings()

    def start(self, wait=True):
        if os.getuid() == 0:
            self.desktop.start_program_as(NOBODY, wait)
        else:
            self.desktop.start_program(wait)

    def test_folder_without_write_permission(self):
        before = self.rest("one", "two")
        self.desktop.data.chmod(0o500)
        self.start()
        self.refused_copy()
        self.assertEqual(before, self.clip.read_bytes())
        self.desktop.data.chmod(0o700)
        self.copy("after it")
        self.assertEqual(["after it", "while it fails", "two", "one"], self.file("Clip")[:4])

    def test_file_without_permission_is_kept(self):
        before = self.rest("one", "two")
        self.clip.chmod(0)
        self.start(wait=False)
        self.answer(TITLE)
        self.desktop.copy("after it")
        kept = self.desktop.data / "ClipData.qbx.unread"
        wait_for("the old file beside the new one", kept.exists)
        kept.chmod(0o600)
        self.assertEqual(before, kept.read_bytes())
        self.newest_becomes("after it")


if __name__ == "__main__":
    unittest.main()
