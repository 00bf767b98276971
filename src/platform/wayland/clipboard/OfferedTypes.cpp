#include "platform/wayland/clipboard/OfferedTypes.h"

namespace quillbox {

void OfferedTypes::Add(std::string_view type) {
  if (type.starts_with(kOwnType)) {
    ownId_ = type.substr(kOwnType.size());
    return;
  }
  if (type == kSecretHintType) secretHint_ = true;
  if (!IsTextOrTalk(type)) textOnly_ = false;
  const int rank = TextTypeRank(type);
  if (rank >= 0 && texts_[rank].empty()) texts_[rank] = type;
}

std::vector<std::string> OfferedTypes::TextTypes() const {
  std::vector<std::string> types;
  for (const std::string& each : texts_)
    if (!each.empty()) types.push_back(each);
  return types;
}

}  // namespace quillbox
