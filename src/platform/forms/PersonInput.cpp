// The person's inputs on the simple controls: the focus goes first where the control takes it.
#include "platform/forms/ComboBox.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/UpDown.h"

namespace quillbox {

void ComboBox::PersonChoose(int index) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    SetListIndex(index);
  });
}

void ScrollBar::PersonScroll(int value) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    SetValue(value);
  });
}

void TabControl::PersonTab(int tab) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    SetTab(tab);
  });
}

void UpDown::PersonSpin(bool up) {
  Dispatch().Dispatch([&] { Raise(up ? UpClick : DownClick); });
}

}  // namespace quillbox
