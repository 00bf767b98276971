"""The programs that are measured: how each is set up for a fresh user and started."""
import os
import shutil

import datafiles


class Program:
    """A clipboard program seen from outside."""

    def __init__(self, name, command, setup=None, count=None):
        self.name, self.command, self.setup = name, command, setup
        self.count = count  # how many entries it has now; None where that cannot be seen from outside

    def there(self):
        return shutil.which(self.command[0]) is not None

    def start(self, desktop):
        if self.setup:
            self.setup(desktop)
        return desktop.start(*self.command)


def _write(desktop, path, text):
    path = desktop.folder / path
    path.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
    path.write_text(text)


def _quillbox(desktop, **more):
    desktop.settings(ClipEntriesMax=99, **more)
    desktop.data.mkdir(mode=0o700, parents=True, exist_ok=True)
    # Lists without entries; without files there would be the examples that every user finds at first.
    for name in ("ClipData.qbx", "PadData.qbx", "ToDoData.qbx"):
        if not (desktop.data / name).exists():
            (desktop.data / name).touch()


def _entries(desktop):
    return len(datafiles.entries(desktop.data / "ClipData.qbx") or ())


def quillbox(**more):
    """`more`: settings of section Intern."""
    return Program("Quillbox", [os.environ["QUILLBOX"]], lambda desktop: _quillbox(desktop, **more), _entries)


def bare():
    """A Qt program with nothing but an icon in the tray: what the toolkit costs."""
    return Program("bare Qt icon", [os.environ["QUILLBOX_BARE"]])


def _gtk(name):
    text = "[rc]\nuse_copy=true\nuse_primary=false\nsave_history=true\nhistory_limit=100\nitem_size=16\n" \
           "data_size=0\nno_icon=false\n"
    return lambda desktop: _write(desktop, f"config/{name}/{name}rc", text)


def _copyq(desktop):
    _write(desktop, "config/copyq/copyq.conf",
           "[Options]\nmaxitems=100\ndisable_tray=false\nhide_main_window=true\nclose_on_unfocus=false\n"
           "activate_closes=true\nactivate_focuses=true\nactivate_pastes=true\n")
    _write(desktop, "config/copyq/copyq-commands.ini",
           '[Command]\nName=Show\nCommand="copyq: toggle()"\nIsGlobalShortcut=true\nGlobalShortcut=ctrl+alt+v\n')


def copyq():
    return [each for each in peers() if each.name == "CopyQ" and each.there()]


def peers():
    # The distribution's ClipIt is only a note that it is gone.
    return [
        Program("CopyQ", ["copyq"], _copyq),
        Program("Parcellite", ["parcellite"], _gtk("parcellite")),
        Program("Diodon", ["diodon"]),
        Program("xfce4-clipman", ["xfce4-clipman"]),
        Program("Qlipper", ["qlipper"]),
    ]
