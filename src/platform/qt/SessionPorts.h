#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ports/EventLoop.h"
#include "platform/ports/KeySender.h"
#include "platform/ports/SessionClipboard.h"

namespace quillbox {

// The ports whose real side depends on the session that runs. Nobody else knows a display server by name.

// To be asked before Qt is started, which would abort the process: RuntimeError 57, with words for the person
// who started it, if there is no display to show windows on.
void RequireDisplay();

// RuntimeError 57, in words as above, if the session has no clipboard that we can reach. `loop` outlives it.
std::unique_ptr<SessionClipboard> ChooseClipboard(EventLoop& loop);

// Never fails: where nothing can be typed, each Send says so. `dataFolder` gives the user's when a permission
// is to be kept there.
std::unique_ptr<KeySender> ChooseKeySender(const std::function<std::string()>& dataFolder);

}  // namespace quillbox
