#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "base/Wipe.h"
#include "platform/x11/clipboard/XConnection.h"

namespace quillbox {

// Reads what another client has put into a property of one of our windows, in one go or in increments (INCR).
// The size that the other client announces is never believed, and at most `keep` bytes are kept; they are
// wiped in the end.
class XIncomingValue {
 public:
  // `format` is the unit that is expected, 8 or 32 bits. `done` is called once, last thing of all.
  XIncomingValue(XConnection& connection, xcb_window_t window, xcb_atom_t property, int format,
                 std::size_t keep, std::function<void()> done);
  ~XIncomingValue();
  XIncomingValue(const XIncomingValue&) = delete;
  XIncomingValue& operator=(const XIncomingValue&) = delete;

  void Start() { Request(); }
  // The property has a new value.
  void OnNewValue();
  // The other client will write no more: what the server has is still read.
  void OwnerGone();
  bool Incremental() const { return incremental_; }

  // How it ended: false if the property was gone, or its type or format changed or wasn't what it must be.
  bool Valid() const { return valid_; }
  xcb_atom_t Type() const { return type_; }
  bool Truncated() const { return truncated_; }
  std::string& Bytes() { return bytes_.Get(); }
  void ForgetBytes() { bytes_.Clear(); }

 private:
  void Request();
  void OnReply(const xcb_get_property_reply_t* reply);
  void Finish(bool valid);

  XConnection& connection_;
  xcb_window_t window_;
  xcb_atom_t property_;
  int format_;
  std::function<void()> done_;
  WipedBytes bytes_;
  xcb_atom_t type_ = XCB_ATOM_NONE;
  std::uint32_t offset_ = 0;  // of the piece asked for, in units of four bytes
  unsigned pending_ = 0;      // sequence number of the request under way
  bool again_ = false;        // a value has arrived behind the one being read
  bool incremental_ = false;
  bool ownerGone_ = false;
  bool truncated_ = false;
  bool valid_ = false;
  bool finished_ = false;
};

}  // namespace quillbox
