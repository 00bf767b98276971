#include <gtest/gtest.h>

#include "platform/forms/CommandButton.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/TextBox.h"

namespace quillbox {
namespace {

class FormsText : public ::testing::Test {
 protected:
  FormsText() {
    form.SetActivates(false);
    form.Show();
    line.Change = [this] { ++changes; };
    block.Change = [this] { ++changes; };
  }
  void Type(TextBox& into, TextView characters) {
    for (const char16_t character : characters) into.PersonCharacter(character);
  }
  void Press(TextBox& on, int code) {
    KeyEvent key;
    key.code = code;
    on.PersonKey(key);
  }
  int TakeChanges() { return std::exchange(changes, 0); }

  Dispatcher dispatcher;
  Form form{dispatcher, "form", u"Form"};
  TextBox line{form, "line", TextBox::Lines::One};
  TextBox block{form, "block", TextBox::Lines::Many};
  CommandButton button{form, "button", u"Button"};
  int changes = 0;
};

TEST_F(FormsText, ChangeComesOnlyWithARealChangeWhoeverMakesIt) {
  line.SetText(u"ab");
  line.SetText(u"ab");
  EXPECT_EQ(TakeChanges(), 1);
  line.PersonSetText(u"ab");
  EXPECT_EQ(TakeChanges(), 0);
  line.PersonSetText(u"abc");
  EXPECT_EQ(TakeChanges(), 1) << "a paste over all is one change";
  Label label(form, "label");
  label.Change = [this] { ++changes; };
  label.SetCaption(u"x");
  label.SetCaption(u"x");
  EXPECT_EQ(TakeChanges(), 1);
}

TEST_F(FormsText, TheCaret) {
  line.SetText(u"ab");
  Type(line, u"c");
  EXPECT_EQ(line.GetText(), u"abc") << "a field that gets the focus has its caret at the end";
  Press(line, keys::kHome);
  Type(line, u"x");
  Press(line, keys::kRight);
  Type(line, u"y");
  EXPECT_EQ(line.GetText(), u"xaybc");
  Press(line, keys::kBackspace);
  Press(line, keys::kDelete);
  EXPECT_EQ(line.GetText(), u"xac");
  line.Select(0, 2);
  Type(line, u"z");
  EXPECT_EQ(line.GetText(), u"zc");
  line.SetText(u"");
  EXPECT_EQ(line.GetSelStart(), 0u);
  Press(line, keys::kBackspace);
  Press(line, keys::kDelete);
  EXPECT_EQ(line.GetText(), u"");
}

TEST_F(FormsText, ASurrogatePairIsOneStep) {
  block.SetText(u"a\U0001F600b");
  Press(block, keys::kLeft);
  Press(block, keys::kLeft);
  EXPECT_EQ(block.GetSelStart(), 1u);
  Press(block, keys::kDelete);
  EXPECT_EQ(block.GetText(), u"ab");
  Type(block, u"\U0001F600");
  EXPECT_EQ(block.GetText(), u"a\U0001F600b");
  Press(block, keys::kBackspace);
  EXPECT_EQ(block.GetText(), u"ab");
}

TEST_F(FormsText, TheLimitHoldsForThePersonAlone) {
  line.SetMaxLength(4);
  line.PersonSetText(u"123456");
  EXPECT_EQ(line.GetText(), u"1234");
  Type(line, u"5");
  EXPECT_EQ(line.GetText(), u"1234");
  line.Select(0, 4);
  Type(line, u"9");
  EXPECT_EQ(line.GetText(), u"9") << "what is replaced makes room";
  line.PersonDrop(u"abcdef");
  EXPECT_EQ(line.GetText().size(), 4u);
  line.SetText(u"123456");
  EXPECT_EQ(line.GetText(), u"123456");
}

TEST_F(FormsText, TheLimitNeverCutsASurrogatePair) {
  line.SetMaxLength(3);
  line.PersonSetText(u"ab\U0001F600");
  EXPECT_EQ(line.GetText(), u"ab");
  Type(line, u"\U0001F600");
  EXPECT_EQ(line.GetText(), u"ab") << "there is room for one unit";
  Type(line, u"c");
  EXPECT_EQ(line.GetText(), u"abc");
}

TEST_F(FormsText, LineBreaks) {
  line.PersonSetText(u"a\r\nb\nc");
  EXPECT_EQ(line.GetText(), u"a b c");
  Type(line, u"\nd");
  EXPECT_EQ(line.GetText(), u"a b c d") << "a line feed from the keyboard too";
  block.PersonSetText(u"a\r\nb");
  Type(block, u"\r");
  EXPECT_EQ(block.GetText(), u"a\r\nb\n") << "Enter gives a line feed";
  int enters = 0;
  button.Click = [&] { ++enters; };
  form.SetDefaultButton(&button);
  Type(line, u"\r");
  EXPECT_EQ(enters, 1) << "a field of one line leaves Enter to the default button";
  Type(block, u"\r");
  EXPECT_EQ(enters, 1);
}

TEST_F(FormsText, KeyPressMayChangeOrTakeACharacter) {
  line.KeyPress = [](char16_t& character) {
    if (character == u'-') character = u'+';
    if (character == u'x' || character == keys::kEnter) character = 0;
  };
  int enters = 0;
  button.Click = [&] { ++enters; };
  form.SetDefaultButton(&button);
  Type(line, u"1-x2\r");
  EXPECT_EQ(line.GetText(), u"1+2");
  EXPECT_EQ(enters, 0) << "an Enter that was taken away reaches nobody";
}

TEST_F(FormsText, Drops) {
  block.SetText(u"ab");
  block.PersonDrop(u"1\n2");
  EXPECT_FALSE(block.HasFocus()) << "a drop moves no focus";
  EXPECT_EQ(block.GetText(), u"1\n2ab");
  block.PersonDrop(std::nullopt);
  EXPECT_EQ(block.GetText(), u"1\n2ab");
  DragData seen;
  block.OLEDragDrop = [&](const DragData& data) { seen = data; };
  block.PersonDrop(u"own");
  EXPECT_EQ(seen, u"own");
  EXPECT_EQ(block.GetText(), u"1\n2ab") << "a handler does it all";
}

}  // namespace
}  // namespace quillbox
