"""The same desktop under KWin, which has no screen either."""
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
        options = [*["--xwayland"] * self.xwayland, "--virtual", "--no-lockscreen", "--no-global-shortcuts"]
        said = runtime / "said"  # the environment of the session's programs
        folders = "XDG_RUNTIME_DIR", "HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"
        self.compositor = self.start(*self.as_nobody(runtime, program, session), program, *options, session,
                                     environment={**dict.fromkeys(folders, str(runtime)), "KWIN_COMPOSE": "Q"})
        wait_for("the compositor", said.exists, 60)
        for name, _, value in (line.partition("=") for line in said.read_text().splitlines()):
            if name == "WAYLAND_DISPLAY":
                self.environment[name] = str(runtime / value)
            elif name in ("DISPLAY", "XAUTHORITY"):
                self.environment[name] = value
