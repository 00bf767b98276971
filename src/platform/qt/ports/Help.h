#pragma once

#include <QString>

#include "base/Text.h"

namespace quillbox {

// Opens a page of the manual, a file name in that folder, in the user's browser. False if the manual isn't
// there, or nothing that opens it.
bool OpenHelp(const Text& folder, const QString& page);

}  // namespace quillbox
