#pragma once

#include "platform/ports/TextFolding.h"

namespace quillbox {

// The letters of German and French, and the accents that can be set on any letter.
class MemoryTextFolding : public TextFolding {
 public:
  Text Fold(char32_t character) override {
    constexpr TextView kFrom = u"ÀÁÂÃÄÅÇÈÉÊËÌÍÎÏÒÓÔÕÖÙÚÛÜàáâãäåçèéêëìíîïòóôõöùúûü";
    constexpr TextView kTo = u"aaaaaaceeeeiiiiooooouuuuaaaaaaceeeeiiiiooooouuuu";
    if (character >= 0x300 && character < 0x370) return {};
    if (character >= U'A' && character <= U'Z') character += U'a' - U'A';
    if (character == U'ß') return u"ss";
    if (character >= 0x10000) return TextOf(character);
    const auto unit = static_cast<char16_t>(character);
    const std::size_t found = kFrom.find(unit);
    return Text(1, found == TextView::npos ? unit : kTo[found]);
  }
};

}  // namespace quillbox
