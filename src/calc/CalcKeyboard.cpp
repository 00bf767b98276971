#include "calc/CalcKeyboard.h"

#include "base/NumberText.h"

namespace quillbox {

namespace {

constexpr char16_t kDiscarded = 0;
constexpr char16_t kBackspace = 8;
constexpr char16_t kEnter = 13;

bool IsOneOf(char16_t key, TextView keys) { return keys.find(key) != TextView::npos; }

}  // namespace

CalcKeyboard::CalcKeyboard(CalcDisplay& display, BaseSelector& bases) : display_(display), bases_(bases) {
  display_.Text7.TakeCommandsAsCharacters();
  display_.Text7.GotFocus = [this] { Text7_GotFocus(); };
  display_.Text7.LostFocus = [this] { Text7_LostFocus(); };
  display_.Text7.KeyPress = [this](char16_t& key) { Text7_KeyPress(key); };
  display_.Text7.OLEDragDrop = [this](const DragData& data) { Text7_OLEDragDrop(data); };
}

void CalcKeyboard::Text7_GotFocus() {
  display_.Text23.SetText(u"got");
  bases_.Show();
  if (display_.Text7.GetText() == u"0" || display_.IsFinished()) display_.Text7.SetText({});
  display_.Text10.SetText({});
}

void CalcKeyboard::Text7_LostFocus() {
  if (display_.Text7.GetText().empty()) display_.Text7.SetText(u"0");
  if (display_.Text22.GetText() == u"k") {
    display_.Text22.SetText({});
    display_.SetFinished();
  }
  display_.Text23.SetText({});
  bases_.Hide();
}

void CalcKeyboard::Text7_KeyPress(char16_t& key) {
  if (key == kEnter) key = u'=';
  if (key == u',') key = u'.';
  EmptyFinishedDisplay(key);
  if (bases_.Base() != NumberBase::Decimal && IsOneOf(key, u"+-/x*=.")) key = kDiscarded;

  const char16_t pressed = key;
  if (pressed == u' ') {
    display_.Text7.SetText({});
    display_.Text8.SetText({});
    display_.Text9.SetText({});
    display_.Text10.SetText({});
  }
  if (key >= u'a' && key <= u'f') key = static_cast<char16_t>(key - u'a' + u'A');
  const bool isLetter = key >= u'A' && key <= u'F';
  if (isLetter && bases_.Base() != NumberBase::Hexadecimal) key = kDiscarded;
  // What is left for the field: digits of the base and Backspace.
  if (!IsOneOf(key, u"0123456789\b") && !isLetter) key = kDiscarded;

  if (pressed == u'+') TypeOperator(u"+");
  if (pressed == u'-') TypeOperator(u"-");
  if (pressed == u'/') TypeOperator(u"/");
  if (pressed == u'x' || pressed == u'*') TypeOperator(u"x");
  if (pressed == u'=') TypeEquals();
  if (pressed == u'.') TypePoint();
}

// What the last step has left is wiped by the next key; a typed result stays for an operator.
void CalcKeyboard::EmptyFinishedDisplay(char16_t key) {
  if (display_.IsFinished()) {
    display_.Text10.SetText({});
    display_.Text7.SetText({});
  }
  if (display_.Text22.GetText() == u"k") {
    display_.Text22.SetText({});
    if (IsOneOf(key, u"0123456789.") || key == kBackspace) display_.Text7.SetText({});
  }
}

void CalcKeyboard::TypeOperator(TextView operation) {
  display_.OrShowCalcError([&] {
    display_.DoPendingOperation();
    display_.Text8.SetText(Text(operation));
    display_.SetFinished();
    display_.Text9.SetText(display_.Text7.GetText());
  });
}

void CalcKeyboard::TypeEquals() {
  display_.OrShowCalcError([this] {
    display_.DoPendingOperation();
    display_.Text8.SetText({});
    display_.Text22.SetText(u"k");
    display_.Text9.SetText({});
  });
}

void CalcKeyboard::TypePoint() {
  const Text& shown = display_.Text7.GetText();
  if (shown.empty()) {
    display_.Text7.SetText(u"0.");
  } else if (shown.find(u'.') == Text::npos) {
    display_.Text7.SetText(shown + u'.');
  } else {
    return;
  }
  display_.PutCaretAtEnd();
}

void CalcKeyboard::Text7_OLEDragDrop(const DragData& data) {
  if (!data) return;
  IgnoreFailure([&] { display_.Show(GetNumberFromText(WithPoint(*data))); });
  display_.Text10.SetText({});
}

}  // namespace quillbox
