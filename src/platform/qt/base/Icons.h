#pragma once

#include <QIcon>
#include <string>

#include "platform/ports/TrayIcon.h"

namespace quillbox {

// The program's own drawings, compiled in.
QIcon WindowIcon();
QIcon TrayImageIcon(TrayImage image);
// One of the button drawings: "up", "down", "insert", "script", "backspace".
QIcon NamedIcon(const char* name);
// The image that a picture control of the main window holds.
QIcon PictureIcon(const std::string& holder);

}  // namespace quillbox
