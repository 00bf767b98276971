#include "dialogs/frmAbout.h"

#include "core/settings/Version.h"

namespace quillbox {

namespace {

constexpr int kWidth = 400 * kTwipsPerPixel;
constexpr int kHeight = 270 * kTwipsPerPixel;
constexpr char16_t kAddress[] = u"https://quillbox.example";

Text ShortVersion() { return Decimal(kMajor).append(u".").append(Decimal(kMinor)); }

Text VersionLine() { return u"Version " + ShortVersion(); }

}  // namespace

frmAbout::frmAbout(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, SystemInfo& system,
                   Clipboard& clipboard)
    : form(dispatcher, "frmAbout", u"Info"),
      picIcon(form, "picIcon"),
      lblTitle(form, "lblTitle", u"Quillbox"),
      lblVersion(form, "lblVersion"),
      Label2(
          form, "Label2",
          u"Quillbox was developed by Norvane. If you have questions or suggestions, come to our web site, "
          u"where "
          u"you also find our contact page. Whenever you visit us, you should also look out for updates "
          u"and new products!"),
      Label5(form, "Label5", kAddress),
      Label3(form, "Label3", u"i"),
      Label4(form, "Label4", u"s"),
      Command1(form, "Command1", u"OK", u"Click here to close the Information Form"),
      window_(window),
      settings_(settings),
      system_(system),
      clipboard_(clipboard) {
  form.SetSize(kWidth, kHeight);
  form.SetCancelButton(&Command1);
  form.LoadHandler = [this] { Form_Load(); };
  form.UnloadHandler = [this] { window_.ExchangeTopmost(true); };
  lblTitle.Click = [this] { lblVersion.SetCaption(VersionLine()); };
  lblVersion.Click = [this] { lblVersion.SetCaption(VersionLine() + u"." + Decimal(kRevision)); };
  Label3.Click = [this] { Label3_Click(); };
  Label4.Click = [this] { Label4_Click(); };
  picIcon.Click = [this] { lblVersion.SetCaption(system_.ProgramFolder()); };
  Label5.Click = [this] { Label5_Click(); };
  Command1.Click = [this] { form.Unload(); };
}

void frmAbout::Form_Load() {
  window_.ExchangeTopmost(false);
  form.SetCaption(u"Quillbox " + ShortVersion() + u" Info");
  lblVersion.SetCaption(VersionLine());
  window_.GetOnTop().Center(form);
}

void frmAbout::Label3_Click() {
  Text line = u"h: ";
  line.append(Decimal(system_.InstanceHandle())).append(u"   ID: ").append(Decimal(system_.ThreadId()));
  lblVersion.SetCaption(line);
}

void frmAbout::Label4_Click() {
  Text line = u"Windows %PfT% %M%.%m%.%Bd% %Sp%";
  lblVersion.SetCaption(settings_.FormatOsText(line));
}

void frmAbout::Label5_Click() {
  if (!CopyAddress()) return;
  Label5.SetCaption(Label5.GetCaption() == kAddress ? u"URL copied to clipboard" : kAddress);
}

bool frmAbout::CopyAddress() {
  const PollPause pause(window_.poll);
  try {
    clipboard_.Clear();
    clipboard_.Put(Text(kAddress) + u"/");
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

}  // namespace quillbox
