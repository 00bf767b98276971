#pragma once

#include <memory>

#include "platform/qt/widgets/FormView.h"

namespace quillbox {

class frmStartHelp;

// The introduction for new users.
std::unique_ptr<FormView> MakeStartHelpView(frmStartHelp& dialog, const ViewTools& tools);

}  // namespace quillbox
