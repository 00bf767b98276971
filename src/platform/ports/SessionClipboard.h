#pragma once

#include <functional>

#include "platform/ports/Clipboard.h"

namespace quillbox {

// A clipboard of the session that runs, with its whole life: a connection that has to find out what there is,
// may be lost, and ends. Which one it is gets chosen once, at the start.
class SessionClipboard : public Clipboard {
 public:
  // Waits, at most so long, until it is known what the clipboard's text is, that there is none, or that it
  // can't be had. For the start, outside of the event loop. True if it is known; at once if it is known
  // already.
  virtual bool Settle(int milliseconds) = 0;
  // Sees to it, waiting at most so long, that a text which we own outlives us. For the end, outside of the
  // event loop. True if somebody else has it now; false if there is nothing of ours, or nobody to take it.
  virtual bool HandOver(int milliseconds) = 0;
  // `lost` is called once, on the event loop, when the session's server has gone away for good. From then on
  // Read, Clear and Put fail with RuntimeError 521.
  virtual void OnLost(std::function<void()> lost) = 0;
};

}  // namespace quillbox
