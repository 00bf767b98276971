#pragma once

class QWidget;

namespace quillbox {

class ClipList;
class ClipPage;
class FormView;

// The page of past clips.
QWidget* MakeClipPage(FormView& view, ClipPage& page, ClipList& list);

}  // namespace quillbox
