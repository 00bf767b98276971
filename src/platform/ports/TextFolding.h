#pragma once

#include "base/Text.h"

namespace quillbox {

// How characters look alike to a person who searches, whatever their case and accents.
class TextFolding {
 public:
  virtual ~TextFolding() = default;
  // What a character is searched as: a small letter without accents; several units where it stands for
  // several ("ß", a ligature), none for an accent of its own. Half a surrogate pair stays as it is.
  virtual Text Fold(char32_t character) = 0;
};

}  // namespace quillbox
