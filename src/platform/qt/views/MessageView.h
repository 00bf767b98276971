#pragma once

#include <memory>

#include "platform/qt/widgets/FormView.h"

namespace quillbox {

class frmMessage;

// The window that tells that the timer is due.
std::unique_ptr<FormView> MakeMessageView(frmMessage& dialog, const ViewTools& tools);

}  // namespace quillbox
