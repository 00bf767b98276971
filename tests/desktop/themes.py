"""Looks of a desktop that users choose: colours and fonts, as the settings of the KDE desktop tell them to Qt."""

DARK = {
    "Window": ("35,38,41", "252,252,252"),
    "View": ("27,30,32", "252,252,252"),
    "Button": ("49,54,59", "252,252,252"),
    "Selection": ("61,174,233", "252,252,252"),
    "Tooltip": ("49,54,59", "252,252,252"),
}


def choose(desktop, dark=False, points=10, scale=1):
    """Before the program's start: dark colours, a font of that size, a screen of `scale` times 96 dpi."""
    fonts = {"font": "", "fixed": " Mono", "menuFont": "", "toolBarFont": ""}
    lines = ["[General]", *(f"{of}=DejaVu Sans{kind},{points},-1,5,50,0,0,0,0,0" for of, kind in fonts.items())]
    if dark:
        for group, (background, foreground) in DARK.items():
            lines += ["", f"[Colors:{group}]", f"BackgroundNormal={background}", f"ForegroundNormal={foreground}",
                      f"BackgroundAlternate={background}"]
    (desktop.folder / "config" / "kdeglobals").write_text("\n".join(lines) + "\n")
    desktop.environment |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "QT_QPA_PLATFORMTHEME": "kde",
                            "QT_SCALE_FACTOR": str(scale)}
