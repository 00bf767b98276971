#pragma once

#include <QString>

#include "base/Text.h"

namespace quillbox {

class Form;

// The page of the manual about what a form has in front, as a file name.
QString HelpPageFor(const Form& form);
// Opens a page of the manual in the user's browser. Nothing if the manual isn't there.
void OpenHelp(const Text& folder, const QString& page);

}  // namespace quillbox
