#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ports/TextTypes.h"

namespace quillbox {

// What matters of the types in which a clipboard's owner offers its content; however many there are.
class OfferedTypes {
 public:
  // The type by which an offer of our own is known: this, and behind it the number of the offer.
  static constexpr std::string_view kOwnType = "application/x-quillbox-offer;id=";

  void Add(std::string_view type);

  // The types to read a text in, the best first; as the owner spells them.
  std::vector<std::string> TextTypes() const;
  bool HasSecretHint() const { return secretHint_; }
  // True if there is nothing beside text.
  bool TextOnly() const { return textOnly_; }
  // The number of the offer if it is one of ours, of this process or another; else empty.
  const std::string& OwnId() const { return ownId_; }

 private:
  std::array<std::string, kTextTypeRanks> texts_;
  std::string ownId_;
  bool secretHint_ = false;
  bool textOnly_ = true;
};

}  // namespace quillbox
