#pragma once

#include <memory>

#include "platform/qt/widgets/FormView.h"

namespace quillbox {

class frmAbout;

// The Info dialog.
std::unique_ptr<FormView> MakeAboutView(frmAbout& dialog, const ViewTools& tools);

}  // namespace quillbox
