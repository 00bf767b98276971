#pragma once

class QWidget;

namespace quillbox {

class FormView;
class PadList;
class PadPage;

// The page of the named texts that stay.
QWidget* MakePadPage(FormView& view, PadPage& page, PadList& list);

}  // namespace quillbox
