#pragma once

#include "core/window/MainWindow.h"
#include "storage/PadList.h"

namespace quillbox {

// Whether a further entry may come into the Pad-List. In a full list the person is asked, and on Yes the
// oldest entry, at the index of the list's maximum, makes room.
bool HasRoomInPad(MainWindow& window, PadList& pad, Norvane& settings);

// Puts a text at the top of the Pad-List under no name, away from where it stood. False if there was no room
// and the person wanted none to be made.
bool AddToPad(MainWindow& window, PadList& pad, Norvane& settings, const SharedText& text);

}  // namespace quillbox
