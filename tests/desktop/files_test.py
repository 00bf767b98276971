#!/usr/bin/env python3
"""Folders and files that can't be written or read: a message, and nothing is lost."""
import contextlib
import os
import shutil
import subprocess
import time
import unittest

import datafiles
from case import DesktopCase
from desktop import wait_for

NOBODY = 65534


class BadFiles(DesktopCase):
    def setUp(self):
        super().setUp()
        self.root = os.getuid() == 0

    def start(self):
        self.desktop.start_program()

    def message(self):
        """The open message box: an own window of the program that is neither the main window nor the icon."""
        def find():
            for window, attributes, geometry, _ in self.desktop.windows():
                name = self.desktop.property(window, "_NET_WM_NAME")
                kinds = list(self.desktop.property(window, "_NET_WM_WINDOW_TYPE") or [])
                if (name is not None and self.desktop.is_viewable(window) and not attributes.override_redirect
                        and bytes(name) != b"Quillbox" and geometry[2] > 100 and kinds):
                    return window
                if (name is not None and bytes(name) == b"Quillbox" and self.desktop.is_viewable(window)
                        and self.desktop.display.intern_atom("_NET_WM_WINDOW_TYPE_DIALOG") in kinds):
                    return window
            return None

        return wait_for("a message", find)

    def confirm(self, name):
        window = self.message()
        self.desktop.picture(name)
        self.desktop.xdotool("windowactivate", "--sync", window.id, "key", "Return")
        wait_for("the message's end", lambda: not self.desktop.is_viewable(window))

    def rest(self):
        """A start with three texts and an end, so that all files are there."""
        self.start()
        for text in ("one", "two", "three"):
            self.desktop.copy(text)
            self.newest_becomes(text)
        self.assertEqual(0, self.desktop.stop_program())
        return {path.name: path.read_bytes() for path in self.desktop.data.iterdir()}

    def clip_entries(self):
        return datafiles.entries(self.desktop.data / "ClipData.qbx")

    def refused_copy(self, name):
        """A copy whose write fails: the message comes, and the text can be pasted."""
        self.desktop.copy("while it fails")
        self.confirm(name)
        self.assertIsNone(self.desktop.program.poll())
        self.assertEqual(b"while it fails", self.desktop.paste())

    def test_full_disk(self):
        if not self.root:
            self.skipTest("only root can mount a small disk")
        self.rest()
        kept = self.desktop.folder / "kept"
        shutil.copytree(self.desktop.data, kept)
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k,mode=700", "tmpfs", self.desktop.data],
                                 capture_output=True)
        if mounted.returncode != 0:
            self.skipTest("no right to mount")
        try:
            for path in kept.iterdir():
                shutil.copy(path, self.desktop.data)
            self.start()
            before = self.clip_entries()
            with contextlib.suppress(OSError), open(self.desktop.data / "ballast", "wb", buffering=0) as ballast:
                while True:
                    ballast.write(b"x" * 512)
            self.refused_copy("disk-full")
            self.assertEqual(before, self.clip_entries(), "the old file is not whole any more")
            (self.desktop.data / "ballast").unlink()
            self.desktop.copy("after it")
            self.newest_becomes("after it")
            self.assertEqual(["after it", "while it fails", *before][:5], self.clip_entries()[:5])
            self.assertEqual(0, self.desktop.stop_program())
        finally:
            if self.desktop.program.poll() is None:
                self.desktop.stop_program()
            subprocess.run(["umount", self.desktop.data], check=True)

    def test_folder_that_is_a_file(self):
        self.desktop.data.parent.mkdir(mode=0o700, parents=True)
        self.desktop.data.write_bytes(b"not a folder")
        self.start()
        self.refused_copy("folder-is-a-file")
        self.assertEqual(b"not a folder", self.desktop.data.read_bytes())
        self.desktop.data.unlink()
        self.desktop.copy("after it")
        self.newest_becomes("after it")
        self.assertEqual(["after it", "while it fails"], self.clip_entries()[:2])

    def test_symbolic_link_stays_one(self):
        self.rest()
        real = self.desktop.folder / "elsewhere.qbx"
        path = self.desktop.data / "ClipData.qbx"
        path.rename(real)
        path.symlink_to(real)
        self.start()
        self.desktop.copy("through the link")
        wait_for("the text behind the link", lambda: datafiles.decode(real.read_bytes()).count("through the link"))
        self.assertTrue(path.is_symlink())
        self.assertEqual(["through the link", "three", "two", "one"], self.clip_entries()[:4])

    def test_broken_file_is_reported_and_the_program_goes_on(self):
        self.rest()
        path = self.desktop.data / "ClipData.qbx"
        content = path.read_bytes()
        path.write_bytes(content[:len(content) // 2])
        self.desktop.start_program(wait=False)
        self.confirm("broken-file")
        wait_for("the icon", self.desktop.icons)
        self.next_copy_is_taken()
        self.assertGreaterEqual(len(self.clip_entries()), 2)


class BadFilesOfAUser(BadFiles):
    """Rights matter only to somebody who isn't root."""

    test_full_disk = test_folder_that_is_a_file = test_symbolic_link_stays_one = None
    test_broken_file_is_reported_and_the_program_goes_on = None

    def start(self):
        if not self.root:
            return self.desktop.start_program()
        self.desktop.start_program_as(NOBODY)
        return None

    def setUp(self):
        super().setUp()
        if self.root:
            if not shutil.which("setpriv"):
                self.skipTest("no setpriv")
            self.desktop.user = NOBODY
            self.desktop.settings()

    def test_folder_without_write_permission(self):
        before = self.rest()
        self.desktop.data.chmod(0o500)
        self.start()
        self.refused_copy("read-only-folder")
        self.assertEqual(before["ClipData.qbx"], (self.desktop.data / "ClipData.qbx").read_bytes())
        self.desktop.data.chmod(0o700)
        self.desktop.copy("after it")
        self.newest_becomes("after it")
        self.assertEqual(["after it", "while it fails", "three", "two", "one"], self.clip_entries()[:5])
        self.assertEqual(0, self.desktop.stop_program())

    def test_file_without_permission_is_kept(self):
        before = self.rest()
        path = self.desktop.data / "ClipData.qbx"
        path.chmod(0)
        if self.root:
            self.desktop.start_program_as(NOBODY, wait=False)
        else:
            self.desktop.start_program(wait=False)
        self.confirm("file-without-permission")
        wait_for("the icon", self.desktop.icons)
        self.desktop.copy("after it")
        kept = self.desktop.data / "ClipData.qbx.unread"
        wait_for("the old file beside the new one", kept.exists)
        kept.chmod(0o600)
        self.assertEqual(before["ClipData.qbx"], kept.read_bytes())
        self.newest_becomes("after it")
        time.sleep(0.1)


if __name__ == "__main__":
    unittest.main()
