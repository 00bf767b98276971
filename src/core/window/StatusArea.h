#pragma once

#include <string_view>

#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"

namespace quillbox {

// "L: " and a length in characters.
inline Text LengthText(std::size_t length) {
  Text text = u"L: ";
  return text.append(Decimal(static_cast<long long>(length)));
}

// The status label of a list page with the two lines that frame it: a length, or what a button has just done.
// The three are always shown and hidden together; hidden at the start.
class StatusArea {
 public:
  StatusArea(const Place& place, std::string_view label, std::string_view upperLine,
             std::string_view lowerLine, const Text& toolTipText)
      : label_(place, label), upper_(place, upperLine, false), lower_(place, lowerLine, false) {
    label_.SetToolTipText(toolTipText);
    label_.SetVisible(false);
  }

  void Show() { SetVisible(true); }
  void Hide() { SetVisible(false); }
  void Write(const Text& word) { label_.SetCaption(word); }
  void WriteLength(std::size_t length) { label_.SetCaption(LengthText(length)); }
  void Show(const Text& word) {
    Write(word);
    Show();
  }
  void ShowLength(std::size_t length) {
    WriteLength(length);
    Show();
  }
  Label& GetLabel() { return label_; }
  Picture& UpperLine() { return upper_; }
  Picture& LowerLine() { return lower_; }

 private:
  void SetVisible(bool visible) {
    label_.SetVisible(visible);
    upper_.SetVisible(visible);
    lower_.SetVisible(visible);
  }

  Label label_;    // the length or the word
  Picture upper_;  // the lines above and below it
  Picture lower_;
};

}  // namespace quillbox
