#pragma once

namespace quillbox {

// Key codes as the handlers compare them.
namespace keys {
inline constexpr int kBackspace = 8;
inline constexpr int kEnter = 13;
inline constexpr int kEscape = 27;
inline constexpr int kSpace = 32;
inline constexpr int kPageUp = 33;
inline constexpr int kPageDown = 34;
inline constexpr int kEnd = 35;
inline constexpr int kHome = 36;
inline constexpr int kLeft = 37;
inline constexpr int kUp = 38;
inline constexpr int kRight = 39;
inline constexpr int kDown = 40;
inline constexpr int kDelete = 46;
inline constexpr int kA = 65;  // with Ctrl, in a list: all rows
}  // namespace keys

struct KeyEvent {
  int code = 0;  // a handler of KeyDown may change it, or make it 0: the key is then ignored
  bool ctrl = false;
  bool shift = false;
  bool alt = false;

  bool CtrlAlone() const { return ctrl && !shift && !alt; }
};

}  // namespace quillbox
