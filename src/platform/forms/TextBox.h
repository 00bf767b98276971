#pragma once

#include "platform/forms/Control.h"

namespace quillbox {

// A field of text. Change comes with each change, whoever makes it. A field of one line holds one line: line
// breaks that come in from anywhere become blanks.
class TextBox : public Control {
 public:
  enum class Lines { One, Many };
  TextBox(const Place& place, std::string_view name, Lines lines, const Text& text = {}, bool visible = true);

  bool TakesFocus() const override { return GetVisible(); }
  bool IsMultiLine() const { return lines_ == Lines::Many; }
  const Text& GetText() const { return text_; }
  // By the program: the caret stays, at the end at most. No limit applies.
  void SetText(const Text& text);

  // The caret, in units from 0 to the length; a selection begins there.
  std::size_t GetSelStart() const { return selStart_; }
  std::size_t GetSelLength() const { return selLength_; }
  void SetSelStart(std::size_t position);
  void Select(std::size_t start, std::size_t length);

  // Most units that a person can put in, pasted ones included; 0: no limit.
  std::size_t GetMaxLength() const { return maxLength_; }
  void SetMaxLength(std::size_t length) { maxLength_ = length; }
  Alignment GetAlignment() const { return alignment_; }
  void SetAlignment(Alignment alignment);
  Color GetBackColor() const { return backColor_; }
  void SetBackColor(Color color);
  // A field of which Ctrl+C, Ctrl+V and Ctrl+X bring characters like any other key, and no commands.
  bool TakesCommandsAsCharacters() const { return takesCommandsAsCharacters_; }
  void TakeCommandsAsCharacters() { takesCommandsAsCharacters_ = true; }
  bool IsReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly) { readOnly_ = readOnly; }

  // Puts a text in at the caret, as far as the limit lets it, and the caret behind it: what a drop does.
  void PutIn(TextView text);

  Event<> Change;

  // The person's inputs. Each is one dispatch and moves the focus here first.
  void PersonSetText(const Text& text);      // the whole text replaced in one change
  void PersonCharacter(char16_t character);  // one key that brings a character
  // Plain editing that the view's field has done: the whole new text and its caret.
  void PersonEdit(const Text& text, std::size_t caret);

 protected:
  void OwnFocus() override;
  void OwnKey(const KeyEvent& key, char16_t character) override;
  void OwnDrop(const DragData& data) override;
  // A field that nobody edits leaves Enter to the default button.
  bool UsesEnter() const override { return IsMultiLine() && !readOnly_; }

 private:
  Text Fitting(const Text& text) const;
  // What was put in beyond the limit is cut off, and never what stood there before.
  Text WithinLimit(const Text& edited, std::size_t& caret) const;
  void Replace(std::size_t start, std::size_t length, TextView with);
  void Insert(char16_t character);
  void Assign(Text text, std::size_t caret);

  Lines lines_;
  Text text_;
  std::size_t selStart_ = 0;
  std::size_t selLength_ = 0;
  std::size_t maxLength_ = 0;
  Alignment alignment_ = Alignment::Left;
  Color backColor_ = Color::Default;
  bool readOnly_ = false;
  bool takesCommandsAsCharacters_ = false;
};

}  // namespace quillbox
