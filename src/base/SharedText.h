#pragma once

#include <memory>
#include <utility>

#include "base/Text.h"

namespace quillbox {

// A text that is never changed, only replaced, so that a row, its slot and whoever shows it hold it once. An
// empty text holds no memory.
class SharedText {
 public:
  SharedText() = default;
  SharedText(Text text) : text_(text.empty() ? nullptr : std::make_shared<const Text>(std::move(text))) {}
  explicit SharedText(TextView text) : SharedText(Text(text)) {}
  SharedText(const char16_t* text) : SharedText(Text(text)) {}

  const Text& Get() const { return text_ ? *text_ : Empty(); }
  operator const Text&() const { return Get(); }
  bool IsEmpty() const { return !text_; }
  std::size_t Length() const { return text_ ? text_->size() : 0; }

  friend bool operator==(const SharedText& a, const SharedText& b) {
    return a.text_ == b.text_ || SameText(a.Get(), b.Get());
  }

 private:
  static const Text& Empty() {
    static const Text empty;
    return empty;
  }
  std::shared_ptr<const Text> text_;
};

}  // namespace quillbox
