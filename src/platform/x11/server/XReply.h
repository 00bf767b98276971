#pragma once

#include <cstdlib>
#include <memory>

namespace quillbox {

struct XReplyFree {
  void operator()(void* memory) const { std::free(memory); }
};

// A reply, an event or an error of xcb, which whoever receives it frees.
template <class T>
using XReply = std::unique_ptr<T, XReplyFree>;

}  // namespace quillbox
