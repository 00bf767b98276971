"""A Wayland desktop of its own for a test: sway without a screen, session bus, a tray, and Quillbox on it."""
import json
import os
import subprocess

from desktop import Desktop, wait_for
from statusnotifier import StatusNotifierHost

CONFIG = """
xwayland {xwayland}
default_border none
exec xhost +local: && echo "$DISPLAY" >"{runtime}/display"
"""
NOBODY = 65534
# The outputs and the drawing need no device.
HEADLESS = {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman", "WLR_LIBINPUT_NO_DEVICES": "1"}


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
        runtime = self.folder / "sway"
        runtime.mkdir(mode=0o700, exist_ok=True)
        xwayland = "enable" if self.xwayland else "disable"
        (runtime / "config").write_text(CONFIG.format(xwayland=xwayland, runtime=runtime))
        self.compositor = self.start(*self.as_nobody(runtime), "sway", "-c", runtime / "config",
                                     environment={**HEADLESS, "XDG_RUNTIME_DIR": str(runtime)})
        socket = wait_for("the compositor", lambda: [path for path in runtime.glob("wayland-*") if path.is_socket()])[0]
        self.environment["WAYLAND_DISPLAY"] = str(socket)
        self.environment["SWAYSOCK"] = str(wait_for("its control", lambda: list(runtime.glob("sway-ipc*")))[0])
        if self.xwayland:
            said = runtime / "display"
            self.environment["DISPLAY"] = wait_for("the X server", lambda: said.exists() and said.read_text().strip())
        # A session has a keyboard; without one programs hear of keys only when the first comes.
        self.start("wtype", "-s", "100000000", "x")

    def as_nobody(self, *paths):
        """What a compositor's command begins with where root runs the tests."""
        if os.getuid() != 0:
            return []
        self.folder.chmod(0o711)
        for path in paths:
            os.chown(path, NOBODY, NOBODY, follow_symlinks=False)
        # Another user's process forgets whose end it was to end with.
        return ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", "--pdeathsig=KILL"]

    def close(self):
        if self.tray:
            self.tray.close()
        super().close()

    def reach(self):
        return "icon" if self.tray.items else ""

    def terminal(self, *command):
        """A native window, which gets the focus; returns its process."""
        return self.start("foot", *command)

    def copy(self, text):
        """Copies in a native program (wl-copy), the `copier`, which lives on until the next copy."""
        self.copier = self.start("wl-copy", "--foreground", text)

    def paste(self):
        """What a native program pastes. KWin lets one of an empty clipboard wait for ever."""
        return self.run("timeout", 30, "wl-paste", "--no-newline", check=False, capture_output=True).stdout.decode()

    def sway(self, *arguments):
        """What the compositor answers."""
        return json.loads(subprocess.run(["swaymsg", *arguments], env=self.environment, check=True, timeout=20,
                                         capture_output=True).stdout)

    def focus(self, program):
        """A person turns to the window of that program."""
        self.sway(f"[app_id={program}] focus")

    def focused(self):
        """What the compositor says of the window with the focus, {} if there is none."""
        tree = self.sway("-t", "get_tree")

        def find(node):
            if node.get("focused") and node.get("pid"):
                return node
            return next(filter(None, map(find, node["nodes"] + node["floating_nodes"])), {})

        return find(tree)
