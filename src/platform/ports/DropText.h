#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Text.h"

namespace quillbox {

// What another program has dropped on a window of ours, for a toolkit that would wait for that program.
class DropText {
 public:
  struct Content {
    Text text;
    std::optional<std::string> addresses;  // a text/uri-list, if one is offered beside the text
  };
  // Called once, on the event loop, after Ask; never if the other program doesn't deliver its text.
  using Done = std::function<void(Content)>;

  virtual ~DropText() = default;
  // Every event of the display server's that the toolkit gets, before it does: they tell of drags.
  virtual void See(const void* event) = 0;
  // Asks for what has just been dropped, and waits for the display server alone. When it returns, the
  // question is on its way before anything that the toolkit says next. Ends the Ask before.
  virtual void Ask(Done done) = 0;
};

}  // namespace quillbox
