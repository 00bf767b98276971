#include "platform/x11/clipboard/XClipboardManagerHandover.h"

namespace quillbox {

bool XClipboardManagerHandover::Run(const std::vector<xcb_atom_t>& targets, xcb_timestamp_t time,
                                    int milliseconds) {
  const XAtoms& atoms = connection_.Atoms();
  xcb_connection_t* connection = connection_.Get();
  const unsigned asked = xcb_get_selection_owner(connection, atoms.clipboardManager).sequence;
  connection_.Await(asked, [&](const void* answer) {
    const auto* reply = static_cast<const xcb_get_selection_owner_reply_t*>(answer);
    if (!reply || !reply->owner) {
      ended_ = true;
      return;
    }
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, owner_, atoms.forSaving, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(connection, owner_, atoms.clipboardManager, atoms.saveTargets, atoms.forSaving,
                          time);
  });
  connection_.Pump([this] { return ended_; }, milliseconds);
  connection_.Forget(asked);
  return saved_;
}

void XClipboardManagerHandover::OnSelectionNotify(const xcb_selection_notify_event_t& event) {
  const XAtoms& atoms = connection_.Atoms();
  if (event.requestor != owner_ || event.selection != atoms.clipboardManager) return;
  ended_ = true;
  saved_ = event.property != XCB_ATOM_NONE;
}

}  // namespace quillbox
