#pragma once

#include <memory>

#include "platform/qt/widgets/FormView.h"

namespace quillbox {

class frmSettings;

// The settings dialog.
std::unique_ptr<FormView> MakeSettingsView(frmSettings& dialog, const ViewTools& tools);

}  // namespace quillbox
