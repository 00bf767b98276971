#include "base/SharedText.h"

#include <utility>

#include "base/CodePage.h"

namespace quillbox {

SharedText::SharedText(TextView text) {
  if (text.empty()) return;
  Body body;
  if (!AppendBytes(body.bytes, text, Encoding::SingleBytes)) body = {std::string(), Text(text)};
  body_ = std::make_shared<const Body>(std::move(body));
}

Text SharedText::Get(std::size_t most) const {
  if (!body_) return {};
  const std::string_view bytes = body_->bytes;
  return body_->text.empty() ? FromBytes(bytes.substr(0, most), Encoding::SingleBytes)
                             : body_->text.substr(0, most);
}

bool SharedText::Is(TextView text) const {
  if (!body_) return text.empty();
  return body_->text.empty() ? AreBytesOf(body_->bytes, text) : SameText(body_->text, text);
}

std::optional<std::string_view> SharedText::SingleBytes() const {
  if (!body_) return std::string_view();
  if (!body_->text.empty()) return std::nullopt;
  return body_->bytes;
}

}  // namespace quillbox
