"""The same desktop under KWin, which has no screen either."""
import os
import pwd
import shutil

from sway import Sway, wait_for

SESSION = '#!/bin/sh\nenv >"$XDG_RUNTIME_DIR/said.new" && mv "$XDG_RUNTIME_DIR/said.new" "$XDG_RUNTIME_DIR/said"\n'


class KWin(Sway):
    def start_compositor(self):
        runtime = self.folder / "kwin"
        runtime.mkdir(mode=0o700)
        # The installed one may have file capabilities that a container doesn't grant; a copy has none.
        program, session = runtime / "kwin_wayland", runtime / "session"
        shutil.copy(shutil.which("kwin_wayland"), program)
        session.write_text(SESSION)
        session.chmod(0o755)
        command = [program, "--virtual", "--no-lockscreen", "--no-global-shortcuts", session]
        if self.xwayland:
            command.insert(1, "--xwayland")
        if os.getuid() == 0:
            nobody = pwd.getpwnam("nobody")
            self.folder.chmod(0o711)
            for path in (runtime, program, session):
                os.chown(path, nobody.pw_uid, nobody.pw_gid)
            command[:0] = ["setpriv", f"--reuid={nobody.pw_uid}", f"--regid={nobody.pw_gid}", "--clear-groups"]
        said = runtime / "said"  # the environment of the session's programs
        self.compositor = self.start(*command, environment={
            "XDG_RUNTIME_DIR": str(runtime), "HOME": str(runtime), "XDG_CONFIG_HOME": str(runtime),
            "XDG_CACHE_HOME": str(runtime), "XDG_DATA_HOME": str(runtime), "KWIN_COMPOSE": "Q"})
        wait_for("the compositor", said.exists, 60)
        for name, _, value in (line.partition("=") for line in said.read_text().splitlines()):
            if name == "WAYLAND_DISPLAY":
                self.environment[name] = str(runtime / value)
            elif name in ("DISPLAY", "XAUTHORITY"):
                self.environment[name] = value
