#pragma once

#include <array>
#include <cassert>
#include <utility>

#include "base/RuntimeError.h"
#include "base/SharedText.h"
#include "core/settings/Limits.h"

namespace quillbox {

// The texts of a list's entries, the slot of an index being the text of that row. Slots at or above the row
// count belong to no row. An index outside 0 to kCount - 1 is RuntimeError 9.
class EntrySlots {
 public:
  static constexpr int kCount = limits::kSlots;

  const SharedText& operator()(int index) const {
    Check(index);
    return slots_[index];
  }
  void Set(int index, SharedText text) {
    Check(index);
    slots_[index] = std::move(text);
  }
  void EmptyAll() { slots_.fill(SharedText()); }

  // Makes room at `index`, one of the rows up to `last`, in a list whose last row is `last` now, and fills
  // it. By value: the text may stand in a slot that moves.
  void Insert(int index, SharedText text, int last) {
    assert(index >= 0 && index <= last);
    for (int i = last; i > index; --i) Set(i, (*this)(i - 1));
    Set(index, std::move(text));
  }
  // Closes the gap at `index`, at most the one behind the last row, in a list whose last row is `last` now;
  // -1 for an empty one.
  void Remove(int index, int last) {
    assert(index >= 0 && index <= last + 1);
    for (int i = index; i <= last; ++i) Set(i, (*this)(i + 1));
    Set(last + 1, SharedText());
  }

 private:
  static void Check(int index) {
    if (index < 0 || index >= kCount) throw RuntimeError(errors::kSubscript, "Subscript out of range");
  }
  std::array<SharedText, kCount> slots_;
};

}  // namespace quillbox
