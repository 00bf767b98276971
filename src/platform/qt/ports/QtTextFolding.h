#pragma once

#include "platform/ports/TextFolding.h"

namespace quillbox {

// Case and accents by Unicode's own tables.
class QtTextFolding : public TextFolding {
 public:
  Text Fold(char32_t character) override;
};

}  // namespace quillbox
