#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ports/DropText.h"
#include "platform/ports/EventLoop.h"
#include "platform/ports/GlobalKey.h"
#include "platform/ports/KeySender.h"
#include "platform/ports/SessionClipboard.h"

namespace quillbox {

// The ports whose real side depends on the session that runs. Nobody else knows a display server by name.

// Where the windows are to be shown, for Qt, which reads it when it starts: on the X server, XWayland's too,
// if there is one, else natively on Wayland. What the user has set (QT_QPA_PLATFORM) counts more.
// RuntimeError 57, with words for the person who started the program, if there is no display: Qt would abort
// the process.
class DisplayChoice {
 public:
  DisplayChoice();
  ~DisplayChoice();  // when Qt has started
  DisplayChoice(const DisplayChoice&) = delete;
  DisplayChoice& operator=(const DisplayChoice&) = delete;

 private:
  bool chosen_ = false;
};

// The Wayland compositor's clipboard where it offers data control, else the X server's. Never both: each
// would take the other's text for a copy. RuntimeError 57, in words as above, if the session has no clipboard
// that we can reach. `loop` outlives it.
std::unique_ptr<SessionClipboard> ChooseClipboard(EventLoop& loop);

// Where the windows are X11's; else null, the toolkit's own way being the only one. For when Qt has started.
// `loop` outlives it.
std::unique_ptr<DropText> ChooseDropText(EventLoop& loop);

// Never fails: where nothing can be typed, each Send says so. `dataFolder` gives the user's when a permission
// is to be kept there.
std::unique_ptr<KeySender> ChooseKeySender(const std::function<std::string()>& dataFolder);

// Whether the session is one of Wayland's, whatever the windows are.
bool IsWayland();

// The X server's grabs, which under Wayland reach X11 windows alone: there the desktop's portal. Never fails;
// where there is neither, each Bind says so. `loop` outlives it.
std::unique_ptr<GlobalKey> ChooseGlobalKey(EventLoop& loop);

}  // namespace quillbox
