#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

class FormsText : public FormsFixture {
 protected:
  TextBox line{form, "line", TextBox::Lines::One};
  TextBox block{form, "block", TextBox::Lines::Many};
  CommandButton button{form, "button", u"Button"};
};

TEST_F(FormsText, ChangeComesOnlyWithARealChangeWhoeverMakesIt) {
  line.Change = Count();
  line.SetText(u"ab");
  line.SetText(u"ab");
  EXPECT_EQ(Take(), 1);
  line.PersonSetText(u"ab");
  EXPECT_EQ(Take(), 0);
  line.PersonSetText(u"abc");
  EXPECT_EQ(Take(), 1) << "a paste over all is one change";
  Label label(form, "label");
  label.Change = Count();
  label.SetCaption(u"x");
  label.SetCaption(u"x");
  EXPECT_EQ(Take(), 1);
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
  Press(line, keys::kSpace);
  EXPECT_EQ(line.GetText(), u"z c");
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

TEST_F(FormsText, TheLimitHoldsForThePersonAloneAndCutsNoPair) {
  line.SetMaxLength(4);
  line.PersonSetText(u"123456");
  Type(line, u"5");
  EXPECT_EQ(line.GetText(), u"1234");
  line.Select(0, 4);
  Type(line, u"9");
  EXPECT_EQ(line.GetText(), u"9") << "what is replaced makes room";
  line.PersonDrop(u"abcdef");
  EXPECT_EQ(line.GetText().size(), 4u);
  line.SetText(u"123456");
  EXPECT_EQ(line.GetText(), u"123456");
  line.PersonSetText(u"abc\U0001F600");
  EXPECT_EQ(line.GetText(), u"abc");
  Type(line, u"\U0001F600");
  EXPECT_EQ(line.GetText(), u"abc") << "there is room for one unit";
  Type(line, u"d");
  EXPECT_EQ(line.GetText(), u"abcd");
}

TEST_F(FormsText, LineBreaks) {
  line.PersonSetText(u"a\r\nb\nc");
  EXPECT_EQ(line.GetText(), u"a b c");
  Type(line, u"\nd");
  EXPECT_EQ(line.GetText(), u"a b c d") << "a line feed from the keyboard too";
  block.PersonSetText(u"a\r\nb");
  Type(block, u"\r");
  EXPECT_EQ(block.GetText(), u"a\r\nb\n") << "Enter gives a line feed";
  button.Click = Count();
  form.SetDefaultButton(&button);
  Type(block, u"\r");
  EXPECT_EQ(Take(), 0);
  Type(line, u"\r");
  EXPECT_EQ(Take(), 1) << "a field of one line leaves Enter to the default button";
  line.KeyPress = [](char16_t& character) { character = character == u'-' ? u'+' : 0; };
  Type(line, u"-x\r");
  EXPECT_EQ(line.GetText(), u"a b c d+") << "a handler may change or take a character";
  EXPECT_EQ(Take(), 0) << "an Enter that was taken away reaches nobody";
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
