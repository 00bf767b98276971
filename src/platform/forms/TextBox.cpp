#include "platform/forms/TextBox.h"

#include <algorithm>

#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"

namespace quillbox {

namespace {

Text OneLine(const Text& text) {
  if (text.find_first_of(u"\r\n") == Text::npos) return text;
  return ReplaceAll(ReplaceAll(ReplaceAll(text, u"\r\n", u" "), u"\r", u" "), u"\n", u" ");
}

}  // namespace

TextBox::TextBox(const Place& place, std::string_view name, Lines lines, const Text& text, bool visible)
    : Control(place, name), lines_(lines), text_(text) {
  SetVisible(visible);
}

void TextBox::Assign(Text text, std::size_t caret) {
  selStart_ = std::min(caret, text.size());
  selLength_ = 0;
  if (SameText(text, text_)) {
    Touch();
    return;
  }
  text_ = std::move(text);
  Touch();
  Raise(Change);
}

void TextBox::SetText(const Text& text) { Assign(IsMultiLine() ? text : OneLine(text), selStart_); }

void TextBox::SetSelStart(std::size_t position) { Select(position, 0); }

void TextBox::Select(std::size_t start, std::size_t length) {
  selStart_ = std::min(start, text_.size());
  selLength_ = std::min(length, text_.size() - selStart_);
  Touch();
}

void TextBox::SetAlignment(Alignment alignment) {
  alignment_ = alignment;
  Touch();
}

void TextBox::SetBackColor(Color color) {
  backColor_ = color;
  Touch();
}

Text TextBox::Fitting(const Text& text) const {
  const Text& whole = IsMultiLine() ? text : OneLine(text);
  return maxLength_ > 0 ? Text(CutTo(whole, maxLength_)) : whole;
}

Text TextBox::WithinLimit(const Text& edited, std::size_t& caret) const {
  if (maxLength_ == 0 || edited.size() <= maxLength_) return edited;
  // The edit is what lies between the beginning and the end that both texts have in common.
  const auto shorter = static_cast<std::ptrdiff_t>(std::min(edited.size(), text_.size()));
  auto head = std::mismatch(edited.begin(), edited.begin() + shorter, text_.begin()).first - edited.begin();
  if (head > 0 && IsHighSurrogate(edited[static_cast<std::size_t>(head) - 1])) --head;
  const auto tail = std::mismatch(edited.rbegin(), edited.rbegin() + (shorter - head), text_.rbegin()).first -
                    edited.rbegin();
  const auto from = static_cast<std::size_t>(head);
  const std::size_t kept = from + static_cast<std::size_t>(tail);
  if (edited.size() == kept) return edited;
  if (kept >= maxLength_) {
    caret = selStart_;
    return text_;
  }
  const TextView putIn = CutTo(TextView(edited).substr(from, edited.size() - kept), maxLength_ - kept);
  caret = from + putIn.size();
  return edited.substr(0, from).append(putIn).append(edited, edited.size() - static_cast<std::size_t>(tail));
}

void TextBox::OwnFocus() { SetSelStart(text_.size()); }

void TextBox::PersonSetText(const Text& text) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    if (!readOnly_) Assign(Fitting(text), text.size());
  });
}

void TextBox::PersonEdit(const Text& text, std::size_t caret) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    if (readOnly_) return;
    std::size_t newCaret = caret;
    Text edited = WithinLimit(IsMultiLine() ? text : OneLine(text), newCaret);
    Assign(std::move(edited), newCaret);
  });
}

void TextBox::PersonCharacter(char16_t character) {
  if (character == keys::kEnter || character == keys::kSpace || character == keys::kBackspace ||
      character == keys::kEscape) {
    KeyEvent key;
    key.code = character;
    PersonKey(key);
    return;
  }
  Dispatch().Dispatch([this, character]() mutable {
    PersonFocus();
    Raise(KeyPress, character);
    if (character != 0) Insert(character);
  });
}

void TextBox::Replace(std::size_t start, std::size_t length, TextView with) {
  Text text = text_;
  text.replace(start, length, with);
  Assign(std::move(text), start + with.size());
}

void TextBox::Insert(char16_t character) {
  if (readOnly_) return;
  if (!IsMultiLine() && (character == u'\r' || character == u'\n')) character = u' ';
  const std::size_t room = maxLength_ == 0 ? 2 : maxLength_ - std::min(maxLength_, text_.size() - selLength_);
  if (room == 0) return;
  // A character of two units comes in whole or not at all.
  if (IsHighSurrogate(character) && room < 2) return;
  if (IsLowSurrogate(character) && (selStart_ == 0 || !IsHighSurrogate(text_[selStart_ - 1]))) return;
  Replace(selStart_, selLength_, TextView(&character, 1));
}

void TextBox::OwnKey(const KeyEvent& key, char16_t character) {
  if (key.ctrl || key.alt) return;
  const std::size_t end = text_.size();
  // A step over a surrogate pair, or over a line end of two units, is one step, as it is in the view's field.
  const auto isPair = [this](std::size_t at) {
    return (IsHighSurrogate(text_[at]) && IsLowSurrogate(text_[at + 1])) ||
           (text_[at] == u'\r' && text_[at + 1] == u'\n');
  };
  const auto before = [&](std::size_t at) {
    if (at >= 2 && isPair(at - 2)) return at - 2;
    return at > 0 ? at - 1 : 0;
  };
  const auto after = [&](std::size_t at) {
    if (at + 1 < end && isPair(at)) return at + 2;
    return std::min(at + 1, end);
  };
  switch (key.code) {
    case keys::kBackspace:
    case keys::kDelete: {
      if (readOnly_) return;
      if (selLength_ > 0) {
        Replace(selStart_, selLength_, {});
      } else if (key.code == keys::kBackspace) {
        const std::size_t from = before(selStart_);
        if (from != selStart_) Replace(from, selStart_ - from, {});
      } else {
        const std::size_t to = after(selStart_);
        if (to != selStart_) Replace(selStart_, to - selStart_, {});
      }
      return;
    }
    case keys::kLeft:
      return SetSelStart(before(selStart_));
    case keys::kRight:
      return SetSelStart(after(selStart_));
    case keys::kHome:
      return SetSelStart(0);
    case keys::kEnd:
      return SetSelStart(end);
    case keys::kEnter:
      // What KeyPress made of it; Enter in our own fields gives a line feed.
      if (character != keys::kEnter) {
        if (character != 0) Insert(character);
      } else if (IsMultiLine()) {
        Insert(u'\n');
      }
      return;
    default:
      if (character != 0 && character != keys::kEscape) Insert(character);
  }
}

void TextBox::PutIn(TextView text) {
  const std::size_t room = maxLength_ == 0 ? text.size() : maxLength_ - std::min(maxLength_, text_.size());
  const Text dropped(CutTo(text, room));
  Text whole = text_;
  whole.insert(selStart_, dropped);
  Assign(IsMultiLine() ? whole : OneLine(whole), selStart_ + dropped.size());
}

void TextBox::OwnDrop(const DragData& data) {
  if (data && !readOnly_) PutIn(*data);
}

}  // namespace quillbox
