#pragma once

#include <algorithm>
#include <cassert>

#include "platform/forms/Control.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// A value between two bounds. A value outside is brought to the nearer bound.
class ScrollBar : public Control {
 public:
  ScrollBar(const Place& place, std::string_view name, int minimum, int maximum, int small = 1, int large = 5)
      : Control(place, name),
        minimum_(minimum),
        maximum_(maximum),
        small_(small),
        large_(large),
        value_(minimum) {
    assert(minimum <= maximum);
  }

  bool TakesFocus() const override { return true; }
  int GetMin() const { return minimum_; }
  int GetMax() const { return maximum_; }
  int GetSmallChange() const { return small_; }
  int GetLargeChange() const { return large_; }
  int GetValue() const { return value_; }
  void SetValue(int value) {
    value = std::clamp(value, minimum_, maximum_);
    if (value_ == value) return;
    value_ = value;
    Touch();
    Raise(Change);
  }
  void PersonScroll(int value) {
    Dispatch().Dispatch([&] {
      PersonFocus();
      SetValue(value);
    });
  }

  Event<> Change;

 protected:
  void OwnClick() override {}

 private:
  int minimum_;
  int maximum_;
  int small_;
  int large_;
  int value_;
};

}  // namespace quillbox
