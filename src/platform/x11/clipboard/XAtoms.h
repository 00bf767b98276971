#pragma once

#include <xcb/xcb.h>

#include <vector>

namespace quillbox {

// The atoms of the clipboard.
struct XAtoms {
  // Interns them all with one round trip.
  void Intern(xcb_connection_t* connection);

  // True for targets that are plain text in some encoding, or no content at all but talk between clients.
  bool IsTextOrProtocol(xcb_atom_t target) const;

  xcb_atom_t clipboard = 0, clipboardManager = 0, windowManager = 0, activeWindow = 0;
  xcb_atom_t targets = 0, timestamp = 0, multiple = 0, atomPair = 0, saveTargets = 0, incr = 0, null = 0;
  xcb_atom_t utf8String = 0, plainUtf8 = 0, text = 0;
  xcb_atom_t passwordHint = 0;
  // Properties of our own windows. Each thing that is asked for has one of its own, so that no answer is
  // taken for another.
  xcb_atom_t forTargets = 0, forHint = 0, forUtf8 = 0, forPlain = 0, forLatin1 = 0, forTime = 0,
             forSaving = 0;

 private:
  std::vector<xcb_atom_t> harmless_;
};

}  // namespace quillbox
