#pragma once

#include <string>

#include "console/VerbTable.h"
#include "platform/forms/Control.h"
#include "platform/forms/Form.h"
#include "platform/forms/MenuItem.h"

// The properties by their names. ConsoleError for a property that the object doesn't have.
namespace quillbox {

void GetOfControl(const Control& control, const std::string& property, Answer& answer);
void GetOfMenuItem(const MenuItem& item, const std::string& property, Answer& answer);
// Null for a form that isn't loaded, of which little is left to ask.
void GetOfForm(const Form* form, const std::string& property, Answer& answer);

}  // namespace quillbox
