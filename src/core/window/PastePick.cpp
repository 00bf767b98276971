#include "core/window/PastePick.h"

#include <algorithm>
#include <array>

#include "base/Utf8.h"

namespace quillbox {

namespace {

constexpr char16_t kPaste[] = u"^v";
constexpr char16_t kPasteInTerminal[] = u"^+v";

// Terminals give Ctrl+V to the program within. Their windows' classes, and on Wayland their ids, in capitals.
constexpr std::array<std::string_view, 34> kTerminals{"ALACRITTY",
                                                      "COM.MITCHELLH.GHOSTTY",
                                                      "COOL-RETRO-TERM",
                                                      "DEEPIN-TERMINAL",
                                                      "FOOT",
                                                      "FOOTCLIENT",
                                                      "GNOME-TERMINAL",
                                                      "GNOME-TERMINAL-SERVER",
                                                      "GUAKE",
                                                      "KGX",
                                                      "KITTY",
                                                      "KONSOLE",
                                                      "LXTERMINAL",
                                                      "MATE-TERMINAL",
                                                      "ORG.GNOME.CONSOLE",
                                                      "ORG.GNOME.PTYXIS",
                                                      "ORG.GNOME.TERMINAL",
                                                      "ORG.KDE.KONSOLE",
                                                      "ORG.KDE.YAKUAKE",
                                                      "ORG.WEZFURLONG.WEZTERM",
                                                      "QTERMINAL",
                                                      "SAKURA",
                                                      "ST-256COLOR",
                                                      "TERMINATOR",
                                                      "TERMINOLOGY",
                                                      "TILDA",
                                                      "TILIX",
                                                      "URXVT",
                                                      "UXTERM",
                                                      "WEZTERM",
                                                      "XFCE4-TERMINAL",
                                                      "XTERM",
                                                      "YAKUAKE",
                                                      "ZUTTY"};

bool IsTerminal(const std::string& windowClass) {
  const std::string capitals = ToUtf8(AsciiUpper(FromUtf8(windowClass)));
  return std::find(kTerminals.begin(), kTerminals.end(), capitals) != kTerminals.end();
}

}  // namespace

PastePick::PastePick(MainWindow& window, Norvane& settings, Platform& platform)
    : window_(window),
      settings_(settings),
      windows_(platform.windows),
      clipboard_(platform.clipboard),
      keySender_(platform.keySender) {}

void PastePick::Picked(const SharedText& text) {
  if (text.IsEmpty() || sending_ || !IsWanted()) return;
  // The window that had the focus was ours: there is nobody to paste to.
  if (window_.form.GetVisible() && windows_.IsForeground(window_.form)) return;
  window_.form.GetDispatcher().Post([this, text] { Send(text); });
}

bool PastePick::Holds(const SharedText& text) {
  bool holds = false;
  IgnoreFailure([&] { holds = text.Is(clipboard_.Read()); });
  if (!holds) Trace({"paste: nothing, the clipboard holds another text by now"});
  return holds;
}

void PastePick::Send(const SharedText& text) {
  if (sending_) return;
  sending_ = true;
  try {
    window_.form.GetDispatcher().WhileWaiting([&] {
      keySender_.SendTo([&](const std::string& windowClass) -> Text {
        if (!Holds(text)) return {};
        return IsTerminal(windowClass) ? kPasteInTerminal : kPaste;
      });
    });
    sending_ = false;
  } catch (const RuntimeError& error) {
    sending_ = false;
    // The program may have been ended while the keys went out.
    if (!window_.form.GetLoaded()) return;
    window_.MessageBox(
        Text(u"The text is on the clipboard, but it could not be pasted. ").append(FromUtf8(error.what())),
        BoxCode::Information, u"Quillbox Paste");
  }
}

}  // namespace quillbox
