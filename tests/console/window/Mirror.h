#pragma once

#include <vector>

#include "console/Person.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

class ProgramViews;

// Where what the shown windows hold differs from the controls that they stand for. Empty if nothing does.
std::vector<Difference> Compare(const Dispatcher& dispatcher, const ProgramViews& views);

}  // namespace quillbox
