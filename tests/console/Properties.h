#pragma once

#include <string>

#include "console/Protocol.h"

namespace quillbox {

// The value of a control's property, as it is answered; false if the control has none of that name.
bool ReadProperty(const Control& control, const std::string& name, Answer& answer);

}  // namespace quillbox
