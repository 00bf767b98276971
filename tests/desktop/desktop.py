"""A desktop of its own for a test: X server, session bus, window manager, panel, and Quillbox on it.

Everything runs in scratch folders and is ended with the desktop, whatever happens to the test.
"""
import contextlib
import ctypes
import os
import pathlib
import pwd
import re
import shutil
import signal
import subprocess
import tempfile

import Xlib.display
import Xlib.error
from Xlib import X

import datafiles
from screen import Screen, wait_for

USER = pwd.getpwuid(os.getuid()).pw_name
PR_SET_CHILD_SUBREAPER = 36
libc = ctypes.CDLL(None)
HOME = {"XDG_CONFIG_HOME": "config", "XDG_DATA_HOME": "data", "XDG_CACHE_HOME": "cache", "XDG_RUNTIME_DIR": "runtime"}

PANEL = """
panel_items = TS
panel_size = 100% 32
panel_layer = top
systray_icon_size = 22
panel_background_id = 1
rounded = 0
background_color = #dddddd 100
"""

# Of the services that this machine has only the screen readers' are started by those who call them.
BUS = """<busconfig><type>session</type>
<listen>unix:dir={folder}/runtime</listen><servicedir>{folder}/services</servicedir>
<policy context="default"><allow send_destination="*"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>"""
SERVICES = pathlib.Path("/usr/share/dbus-1/services")


class Desktop(Screen, contextlib.AbstractContextManager):
    """Starts the parts that it is asked for; `with Desktop() as desktop:`."""

    program_file = os.environ.get("QUILLBOX", "")
    program_environment = {}  # besides the desktop's
    program = display = None

    def __init__(self, **parts):
        # What the started processes leave behind becomes ours, and is ended with the rest.
        libc.prctl(PR_SET_CHILD_SUBREAPER, 1)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillbox-desktop-"))
        self.processes = []
        try:
            self._start(**parts)
        except BaseException:
            self.close()
            raise

    def __exit__(self, *_):
        self.close()

    def _make_home(self, **environment):
        """A user's folders, which nothing else is in."""
        self.environment = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8", "HOME": str(self.folder), **environment}
        for key, name in HOME.items():
            (self.folder / name).mkdir(mode=0o700)
            self.environment[key] = str(self.folder / name)

    def _start(self, window_manager=True, panel=True, bus=True, screen="1280x1024x24"):
        self._make_home(NO_AT_BRIDGE="1")  # without a screen reader the program has nothing to tell one
        self.server = self.start("Xvfb", "-displayfd", 1, "-screen", 0, screen, "-nolisten", "tcp", "-noreset")
        self.environment["DISPLAY"] = self.name = ":" + self._told("Xvfb", r"\d+")
        if bus:
            self._start_bus()
        self.display = Xlib.display.Display(self.name)
        self.root = self.display.screen().root
        self.unmapped = self.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        if window_manager:
            self.start("openbox", "--sm-disable")
            wait_for("the window manager", lambda: self.property(self.root, "_NET_SUPPORTING_WM_CHECK"))
        if panel:
            self.start_panel()

    def _start_bus(self):
        (self.folder / "services").mkdir()
        for service in SERVICES.glob("org.a11y.*"):
            shutil.copy(service, self.folder / "services")
        (self.folder / "bus.conf").write_text(BUS.format(folder=self.folder))
        self.start("dbus-daemon", f"--config-file={self.folder / 'bus.conf'}", "--nofork", "--print-address=1")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._told("dbus-daemon", "unix:.+")

    def _told(self, server, line):
        """Waits for the line in which a server that was started tells how it is reached."""
        return wait_for(server, lambda: re.search(f"^({line})\n", self.log(server), re.MULTILINE), 60)[1]

    # --- processes

    def start(self, program, *arguments, environment=None):
        """Starts a process that ends with the desktop; what it says goes into a log."""
        with open(self.folder / f"{pathlib.Path(program).name}.log", "ab") as log:
            # Python of our own in the new process could hang there: this one has threads.
            process = subprocess.Popen(
                ["setpriv", "--pdeathsig=KILL", str(program), *map(str, arguments)], stdin=subprocess.DEVNULL,
                stdout=log, stderr=log, start_new_session=True, env={**self.environment, **(environment or {})})
        self.processes.append(process)
        return process

    def log(self, program):
        path = self.folder / f"{program}.log"
        return path.read_text(errors="replace") if path.exists() else ""

    def end(self, process, how=signal.SIGTERM, seconds=20):
        """Ends a process of this desktop; one that does not end in time is killed and None is returned."""
        if process.poll() is None:
            process.send_signal(how)
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            return None

    def start_panel(self):
        """The panel with task bar and tray; returns when the tray is there."""
        (self.folder / "panel.conf").write_text(PANEL)
        self.panel = self.start("tint2", "-c", self.folder / "panel.conf")
        wait_for("the tray", lambda: self.display.get_selection_owner(self.atom("_NET_SYSTEM_TRAY_S0")))

    def close(self):
        if self.display:
            with contextlib.suppress(Xlib.error.ConnectionClosedError):
                self.display.close()
        # Clients before the server, so that each ends in its own way.
        for process in reversed(self.processes):
            self.end(process, seconds=3)
        # What they started and left to us: clients in the background, services of the bus.
        children = pathlib.Path(f"/proc/self/task/{os.getpid()}/children")
        while found := children.read_text().split():
            for child in map(int, found):
                with contextlib.suppress(ProcessLookupError, ChildProcessError):
                    os.kill(child, signal.SIGKILL)
                    os.waitpid(child, 0)
        shutil.rmtree(self.folder, ignore_errors=True)

    # --- the program

    @property
    def data(self):
        """The folder of the data files."""
        return self.folder / "data" / "quillbox" / USER

    def settings(self, message=None, **intern):
        """Writes the settings of a user who has used the program before, and doesn't want the start help again; names
        are those of section Intern, and of the timer's message."""
        sections = {"Intern": {"StartHelp": "No", **intern}, "Extern": {"QuillboxVMajor": 4, "QuillboxVMinor": 31},
                    "MessageEntry": message or {}}
        lines = ["REGEDIT4"]
        for section, values in sections.items():
            lines += ["", rf"[HKEY_CURRENT_USER\Software\Norvane\Quillbox\{USER}\{section}]"]
            lines += [f'"{name}"="{value}"' for name, value in values.items()]
        folder = self.folder / "config" / "quillbox"
        folder.mkdir(mode=0o700, exist_ok=True)
        (folder / "user.reg").write_bytes("\r\n".join([*lines, ""]).encode("cp1252"))

    def script(self, keys):
        """A Pad-List with nothing but a script, "Hello"."""
        datafiles.write(self.data / "PadData.qbx", ["Hello\r\n{SCRIPT}" + keys])

    def start_program(self, wait=True):
        """Starts Quillbox; with `wait` returns when a person can reach it."""
        self.program = self.start(self.program_file, environment=self.program_environment)
        if wait:
            wait_for("Quillbox in reach", self.reach, 30)
        return self.program

    def stop_program(self, how=signal.SIGTERM):
        """Ends Quillbox and returns its exit code, None if it had to be killed."""
        return self.end(self.program, how)

    def traces(self, text):
        """Where a part of the text is found: "memory" of the program, or names of files."""
        places = {str(path): path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}
        process = pathlib.Path(f"/proc/{self.program.pid}")
        with open(process / "mem", "rb", buffering=0) as memory:
            for start, end in re.findall(r"^(\w+)-(\w+) rw", (process / "maps").read_text(), re.MULTILINE):
                memory.seek(int(start, 16))
                places["memory"] = places.get("memory", b"") + memory.read(int(end, 16) - int(start, 16))
        parts = [part.encode(code) for part in (text[:12], text[-12:], text[4:16]) for code in ("utf-8", "utf-16-le")]
        return [name for name, content in places.items() if any(part in content for part in parts)]

    def reach(self):
        """How a person can reach the program now: "icon", "window", "taskbar" or ""."""
        if self.icons():
            return "icon"
        if self.shown():
            return "window"
        window = self.window("Quillbox")
        return "taskbar" if window and window.id in self.stacking() else ""
