#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace quillbox {

class XKeyConnection;

// Puts keysyms on key codes that no key of the keyboard has. Such a code gives the same in all groups, with
// and without Shift. What is put on is first recorded in a property of the root window, so that a later start
// can take it off if this process is killed meanwhile.
class XSpareKeys {
 public:
  explicit XSpareKeys(XKeyConnection& connection);

  // Puts each keysym on one of the `codes`, of which there are at least as many, in ascending order. Nothing
  // may be put on already.
  void PutOn(const std::vector<xkb_keysym_t>& keysyms, const std::vector<xcb_keycode_t>& codes);
  // The code that a keysym was put on; 0 for any other.
  xcb_keycode_t CodeOf(xkb_keysym_t keysym) const;
  // Whether all that was put on is still there.
  bool Intact() { return StillOn(keys_).size() == keys_.size(); }
  bool Any() const { return !keys_.empty(); }
  // Leaves codes alone on which something else has been put meanwhile.
  void TakeOff();
  // Takes off what a process that was killed has left.
  void Recover();

 private:
  using Keys = std::vector<std::pair<xcb_keycode_t, xkb_keysym_t>>;

  void Write(const Keys& keys, bool on);
  Keys StillOn(const Keys& keys);
  void Clear(const Keys& keys);

  XKeyConnection& connection_;
  xcb_atom_t record_ = XCB_NONE;
  Keys keys_;
};

}  // namespace quillbox
