#pragma once

#include <utility>

#include "base/Event.h"
#include "base/RuntimeError.h"
#include "base/Text.h"

namespace quillbox {

// A scoped name hides nothing, whatever older compilers say.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
// What happened to the clipboard from outside since the last news.
enum class ClipboardNews {
  Text,   // a text has arrived: the next Read gives it
  Other,  // cleared, content without text, an owner that cannot be read
};
#pragma GCC diagnostic pop

// The system clipboard as plain text. Never waits for another program.
class Clipboard {
 public:
  virtual ~Clipboard() = default;
  // The clipboard's text, empty when it holds anything but text or nothing. Valid until the next call or the
  // next turn of the event loop. RuntimeError 521 while the clipboard can't be opened: its owner has not
  // delivered yet. Costs nothing while nothing has changed.
  virtual TextView Read() = 0;
  // Whether what Read gives as no text is a secret: nothing may be put in its place unasked.
  virtual bool HoldsSecret() const = 0;
  // Both may fail with RuntimeError 521; afterwards Read gives what was set.
  virtual void Clear() = 0;
  virtual void Put(TextView text) = 0;
  // As Put, for a clipboard that Read has found empty; but a copy that another program has made since then,
  // and of which we haven't heard yet, stays where the session can tell.
  virtual void PutUnlessTaken(TextView text) { Put(text); }
  // `news` is called on the event loop, never from within Read, Clear or Put, as long as the hook stays.
  Hook Listen(Event<ClipboardNews>::Handler news) { return news_.Listen(std::move(news)); }

 protected:
  void Tell(ClipboardNews news) const { news_(news); }

 private:
  Event<ClipboardNews> news_;
};

}  // namespace quillbox
