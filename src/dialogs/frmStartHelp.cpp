#include "dialogs/frmStartHelp.h"

namespace quillbox {

namespace {

constexpr int kWidth = 480 * kTwipsPerPixel;
constexpr int kHeight = 440 * kTwipsPerPixel;
constexpr char16_t kAboutQuillbox[] = u"Click here if you want to know more about Quillbox...";
constexpr char16_t kAboutNorvane[] = u"Click here if you want to know more about Norvane...";

// %N% stands for the most entries that a list can hold.
constexpr char16_t kText[] =
    u"INTRODUCTION\r\n"
    u"\r\n"
    u"\"Clip\" is the main thing: a powerful clipboard enhancement utility. It \r\n"
    u"automatically stores the last %N% clipboard entries and keeps them \r\n"
    u"ready in the Clip-List, only a mouse-click away.\r\n"
    u"\r\n"
    u"\"Pad\" is a list where you have up to %N% frequently typed texts \r\n"
    u"(passwords, source code, even Scripts...) right at your fingertips.\r\n"
    u"\r\n"
    u"\"Calc\" is a small calculator - great if you want to know the result of a \r\n"
    u"computation quickly.\r\n"
    u"\r\n"
    u"\"Timer\" is a utility that allows you to set a message that pops up on \r\n"
    u"the screen, after a certain time period or at a certain time.\r\n"
    u"\r\n"
    u"\"ToDo\" is a ToDo-List that allows you to enter %N% tasks and mark \r\n"
    u"them \"completed\" when you have finished.\r\n"
    u"\r\n"
    u"\r\n"
    u"FURTHER INFORMATION\r\n"
    u"\r\n"
    u"If you want to get a more detailed feature overview or require information about how to use Quillbox, "
    u"have a look at the Quillbox HTML help files. They are located in the \"Help\" folder in your Quillbox "
    u"installation directory.\r\n";

}  // namespace

frmStartHelp::frmStartHelp(Dispatcher& dispatcher, MainWindow& window, Norvane& settings,
                           const std::function<void()>& openAbout)
    : form(dispatcher, "frmStartHelp", u"General Starting Information on Quillbox"),
      Label2(form, "Label2", u"Norvane's"),
      Label1(form, "Label1", u"Quillbox"),
      Image1(form, "Image1"),
      Image2(form, "Image2"),
      Text1(form, "Text1", TextBox::Lines::Many, ReplaceAll(kText, u"%N%", Decimal(limits::kEntries))),
      Check1(form, "Check1",
             u"Display this StartHelp at every startup  (you may also call it later using the menu)", true),
      Command1(form, "Command1", u"OK", u"Click here to close the General Starting Information Form"),
      window_(window),
      settings_(settings) {
  form.SetSize(kWidth, kHeight);
  form.SetDefaultButton(&Command1);
  form.SetCancelButton(&Command1);
  Text1.SetReadOnly(true);
  form.LoadHandler = [this] { Form_Load(); };
  form.UnloadHandler = [this] { window_.ExchangeTopmost(true); };
  Command1.Click = [this] { Command1_Click(); };
  for (Control* quillbox : {&Label1, &Label2}) quillbox->SetToolTipText(kAboutQuillbox);
  for (Control* norvane : {&Image1, &Image2}) norvane->SetToolTipText(kAboutNorvane);
  for (Control* link : std::initializer_list<Control*>{&Image1, &Image2, &Label1, &Label2})
    link->Click = openAbout;
}

void frmStartHelp::Form_Load() {
  window_.ExchangeTopmost(false);
  window_.GetOnTop().Center(form);
  if (settings_.IsNo(setting::kStartHelp)) Check1.SetValue(false);
}

void frmStartHelp::Command1_Click() {
  settings_.Write(setting::kStartHelp, Check1.GetValue());
  form.Unload();
}

}  // namespace quillbox
