#pragma once

#include <vector>

#include "base/RuntimeError.h"
#include "platform/forms/Control.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// A choice from a fixed list. Click comes with each change of the index.
class ComboBox : public Control {
 public:
  ComboBox(const Place& place, std::string_view name, std::vector<Text> items)
      : Control(place, name), items_(std::move(items)) {}

  bool TakesFocus() const override { return true; }
  const std::vector<Text>& Items() const { return items_; }
  int GetListIndex() const { return index_; }
  // -1 for none; RuntimeError 381 for an index without an item.
  void SetListIndex(int index) {
    if (index < -1 || index >= static_cast<int>(items_.size())) {
      throw RuntimeError(errors::kBadIndex, "Invalid property array index");
    }
    if (index_ == index) return;
    index_ = index;
    Touch();
    Raise(Click);
  }
  void PersonChoose(int index) {
    Dispatch().Dispatch([&] {
      PersonFocus();
      SetListIndex(index);
    });
  }

 protected:
  // Opening the list of choices changes nothing.
  void OwnClick() override {}

 private:
  std::vector<Text> items_;
  int index_ = -1;
};

}  // namespace quillbox
