#include "timer/frmMessage.h"

namespace quillbox {

namespace {

constexpr int kWidth = 340 * kTwipsPerPixel;
constexpr int kHeight = 240 * kTwipsPerPixel;
constexpr int kDelayOfButtons = 3000;

}  // namespace

frmMessage::frmMessage(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, Sound& sound,
                       std::function<void()> showAgainInTwoMinutes)
    : form(dispatcher, "frmMessage", u"Quillbox Timer Message"),
      Image1(form, "Image1"),
      Image2(form, "Image2"),
      Shape1(form, "Shape1"),
      Line1(form, "Line1"),
      Label1(form, "Label1", u"Quillbox"),
      Label2(form, "Label2", u"Norvane's"),
      Label3(form, "Label3"),
      Label4(form, "Label4"),
      Command1(form, "Command1", u"OK", u"Click here to close the Timer Message Form", false),
      Command2(form, "Command2", u"    Show again         in 2 minutes",
               u"Close the form, but pop up again in 2 minutes", false),
      Timer1(form, "Timer1", kDelayOfButtons, false),
      window_(window),
      settings_(settings),
      sound_(sound),
      showAgainInTwoMinutes_(std::move(showAgainInTwoMinutes)) {
  form.SetSize(kWidth, kHeight);
  // It comes up by itself: what is being typed into another window goes on there.
  form.SetActivates(false);
  form.SetDefaultButton(&Command1);
  form.SetCancelButton(&Command1);
  form.LoadHandler = [this] { Form_Load(); };
  form.UnloadHandler = [this] { Form_Unload(); };
  Label3.SetAlignment(Alignment::Center);
  Label4.SetAlignment(Alignment::Center);
  Command1.SetVisible(false);
  Command2.SetVisible(false);
  Command1.Click = [this] { Command1_Click(); };
  Command2.Click = [this] { Command2_Click(); };
  Timer1.Tick = [this] { Timer1_Timer(); };
}

void frmMessage::Form_Load() {
  window_.ExchangeTopmost(false);
  window_.GetOnTop().Center(form);
  window_.GetOnTop().OnTopSet(form);
  const Text wavePath = settings_.Read(setting::kWavePath);
  if (settings_.IsOn(setting::kPlayWave) && !wavePath.empty()) sound_.Play(wavePath);
}

void frmMessage::Form_Unload() {
  window_.GetOnTop().OnTopClear(form);
  window_.ExchangeTopmost(true);
}

void frmMessage::Timer1_Timer() {
  OfferButtons(true);
  Timer1.SetEnabled(false);
}

void frmMessage::Command1_Click() {
  OfferButtons(false);
  form.Unload();
}

void frmMessage::Command2_Click() {
  showAgainInTwoMinutes_();
  Command1_Click();
}

void frmMessage::OfferButtons(bool offered) {
  for (CommandButton* button : {&Command1, &Command2}) {
    button->SetVisible(offered);
    button->SetEnabled(offered);
  }
}

}  // namespace quillbox
