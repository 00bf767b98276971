#pragma once

class QWidget;

namespace quillbox {

class ClipList;
class ClipPage;
class ClipWatcher;
class FormView;

// The page of past clips.
QWidget* MakeClipPage(FormView& view, ClipPage& page, ClipWatcher& watcher, ClipList& list);

}  // namespace quillbox
