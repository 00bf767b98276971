"""A Wayland desktop of its own for a test: sway without a screen, session bus, a tray, and Quillbox on it."""
import json
import os

from desktop import Desktop, wait_for
from statusnotifier import StatusNotifierHost

# What a compositor starts tells of the environment, by which programs find compositor and X server.
SESSION = """#!/bin/sh
[ -z "$DISPLAY" ] || xhost +local:
env >"$XDG_RUNTIME_DIR/said.new" && mv "$XDG_RUNTIME_DIR/said.new" "$XDG_RUNTIME_DIR/said"
"""
FOLDERS = "XDG_RUNTIME_DIR", "HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"
NOBODY = 65534
# The outputs and the drawing need no device.
HEADLESS = {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1", "KWIN_COMPOSE": "Q"}


class Sway(Desktop):
    """`with Sway() as screen:`; `screen.tray` is a StatusNotifier host."""

    program_environment = {"QUILLBOX_LOG": "1"}

    def __init__(self, xwayland=False):
        self.xwayland = xwayland
        self.tray = None
        super().__init__()

    def _start(self, *_):
        self._make_home(NO_AT_BRIDGE="1", XDG_SESSION_TYPE="wayland")
        self._start_bus()
        self.tray = StatusNotifierHost(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.start_compositor()

    def start_compositor(self):
        """Sway refuses to run as root; it is another user's then, and its socket is used all the same."""
        runtime = self.folder / "compositor"
        runtime.mkdir(mode=0o700)
        session, said = runtime / "session", runtime / "said"
        session.write_text(SESSION)
        session.chmod(0o755)
        command = self.command(runtime, session)
        if os.getuid() == 0:
            self.folder.chmod(0o711)
            for path in runtime, *runtime.iterdir():
                os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
            # Another user's process forgets whose end it was to end with.
            command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", "--pdeathsig=KILL",
                       *command]
        self.compositor = self.start(*command, environment={**HEADLESS, **dict.fromkeys(FOLDERS, str(runtime))})
        wait_for("the compositor", said.exists)
        for name, _, value in (line.partition("=") for line in said.read_text().splitlines()):
            if name in ("DISPLAY", "XAUTHORITY", "SWAYSOCK"):
                self.environment[name] = value
            elif name == "WAYLAND_DISPLAY":
                self.environment[name] = str(runtime / value)
        # A session has a keyboard; without one programs hear of keys only when the first comes.
        self.start("wtype", "-s", "100000000", "x")

    def command(self, runtime, session):
        """The compositor's, which starts `session`; files that it needs are put into the folder `runtime`."""
        config = runtime / "config"
        xwayland = "enable" if self.xwayland else "disable"
        config.write_text(f"xwayland {xwayland}\ndefault_border none\nexec {session}\n")
        return ["sway", "-c", config]

    def close(self):
        if self.tray:
            self.tray.close()
        super().close()

    def reach(self):
        return "icon" if self.tray.items else ""

    def terminal(self, *command):
        """A native window, which gets the focus."""
        self.start("foot", *command)
        self.in_front("foot")

    def copy(self, text):
        """Copies in a native program (wl-copy), the `copier`, which lives on until the next copy."""
        self.copier = self.start("wl-copy", "--foreground", text)

    def paste(self):
        """What a native program pastes. KWin lets one of an empty clipboard wait for ever."""
        return self.run("timeout", 30, "wl-paste", "--no-newline", check=False, capture_output=True).stdout.decode()

    def sway(self, *arguments):
        """What the compositor answers."""
        return json.loads(self.run("swaymsg", *arguments, capture_output=True).stdout)

    def in_front(self, window):
        """Waits until the window of that program or title has the focus."""
        wait_for(f"{window} in front", lambda: window in self.focused())

    def focused(self):
        """Program and title of the window with the focus, as the compositor knows them."""
        def find(node):
            if node.get("focused") and node.get("pid"):
                return node["app_id"], node["name"]
            return next(filter(None, map(find, node["nodes"] + node["floating_nodes"])), ())

        return find(self.sway("-t", "get_tree"))
