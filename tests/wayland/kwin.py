"""The same desktop under KWin, which has no screen either."""
import shutil

from sway import Sway


class KWin(Sway):
    def command(self, runtime, session):
        # The installed one may have file capabilities that a container doesn't grant; a copy has none.
        program = shutil.copy(shutil.which("kwin_wayland"), runtime)
        options = ["--virtual", "--no-lockscreen", "--no-global-shortcuts", *["--xwayland"] * self.xwayland]
        return [program, *options, session]
