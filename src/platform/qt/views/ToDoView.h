#pragma once

class QWidget;

namespace quillbox {

class FormView;
class ToDoPage;

// The page of tasks.
QWidget* MakeToDoPage(FormView& view, ToDoPage& page);

}  // namespace quillbox
