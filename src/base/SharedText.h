#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace quillbox {

// A text that is never changed, only replaced, so that a row, its slot and whoever shows it hold it once: as
// its single bytes of Windows-1252 where it has no other characters, which is half the memory and what the
// data files hold. An empty text holds no memory.
class SharedText {
 public:
  SharedText() = default;
  SharedText(const Text& text) : SharedText(TextView(text)) {}
  SharedText(const char16_t* text) : SharedText(TextView(text)) {}
  explicit SharedText(TextView text);

  // At most the first `most` units; made at each call.
  Text Get(std::size_t most = Text::npos) const;
  operator Text() const { return Get(); }
  bool Is(TextView text) const;
  bool IsEmpty() const { return !body_; }
  std::size_t Length() const { return body_ ? body_->bytes.size() + body_->text.size() : 0; }
  // Nothing if it has a character that isn't in Windows-1252. Valid as long as the text.
  std::optional<std::string_view> SingleBytes() const;

  friend bool operator==(const SharedText& a, const SharedText& b) {
    if (a.body_ == b.body_) return true;
    return a.body_ && b.body_ && a.body_->bytes == b.body_->bytes && SameText(a.body_->text, b.body_->text);
  }

 private:
  struct Body {
    std::string bytes;
    Text text;  // empty where the bytes say it all
  };
  std::shared_ptr<const Body> body_;
};

}  // namespace quillbox
