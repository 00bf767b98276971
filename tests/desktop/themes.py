"""Looks of a desktop that users choose: colours and fonts, as the settings of the KDE desktop tell them to Qt."""

BACKGROUNDS = {"Window": "35,38,41", "View": "27,30,32", "Button": "49,54,59", "Selection": "61,174,233",
               "Tooltip": "49,54,59"}


def choose(desktop, dark=False, points=10, scale=1):
    """Before the program's start: dark colours, a font of that size, a screen of `scale` times 96 dpi."""
    fonts = {"font": "", "fixed": " Mono", "menuFont": "", "toolBarFont": ""}
    lines = ["[General]", *(f"{of}=DejaVu Sans{kind},{points},-1,5,50,0,0,0,0,0" for of, kind in fonts.items())]
    for group, color in BACKGROUNDS.items() if dark else ():
        lines += [f"[Colors:{group}]", f"BackgroundNormal={color}", f"BackgroundAlternate={color}",
                  "ForegroundNormal=252,252,252"]
    (desktop.folder / "config" / "kdeglobals").write_text("\n".join(lines) + "\n")
    desktop.environment |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "QT_QPA_PLATFORMTHEME": "kde",
                            "QT_SCALE_FACTOR": str(scale)}
