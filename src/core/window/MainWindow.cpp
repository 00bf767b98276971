#include "core/window/MainWindow.h"

#include <optional>

namespace quillbox {

namespace {

constexpr int kWidth = 446 * kTwipsPerPixel;
constexpr int kHeight = 420 * kTwipsPerPixel;
constexpr int kClockInterval = 250;  // milliseconds
constexpr char16_t kKeepStatus[] = u"X";

}  // namespace

MainWindow::MainWindow(Form& of, Norvane& settings, Platform& platform)
    : form(of),
      SSTab1(of, "SSTab1", {u"Clip", u"Pad", u"Calc", u"Timer", u"ToDo"}),
      Command47(of, "Command47", u"Settings...", u"Customize Quillbox"),
      Command48(of, "Command48", u"Info...", u"Display information about Quillbox"),
      Command6(of, "Command6", u"Minimize Quillbox", u"Minimize and save window position"),
      Text2(of, "Text2", TextBox::Lines::One, u"", false),
      Text4(of, "Text4", TextBox::Lines::One, u"", false),
      poll(of),
      Timer2(of, "Timer2", kClockInterval, true),
      settings_(settings),
      platform_(platform),
      onTop_(platform.windows) {
  form.SetActivates(false);
  form.SetSize(kWidth, kHeight);
  form.Resize = [this] { Form_Resize(); };
  Command6.Click = [this] { Command6_Click(); };
}

void MainWindow::Form_Resize() {
  if (form.GetWindowState() == WindowState::Minimized) {
    form.Hide();
    form.SetWindowState(WindowState::Normal);
    Raise(WentAway);
    return;
  }
  const std::optional<int> left = settings_.Read(setting::kLeft);
  const std::optional<int> top = settings_.Read(setting::kTop);
  const PixelSize screen = onTop_.ScreenTwips();
  form.Move(left.value_or((screen.width - form.GetWidth()) / 2),
            top.value_or((screen.height - form.GetHeight()) / 2));
}

void MainWindow::Command6_Click() {
  if (settings_.IsOn(setting::kAutoRefresh2)) {
    Text4.SetText(u"NoShow");
    Raise(RefreshToDo);
  }
  Raise(SaveLists);
  if (form.GetWindowState() != WindowState::Minimized) {
    settings_.Write(setting::kTop, form.GetTop());
    settings_.Write(setting::kLeft, form.GetLeft());
  }
  Minimize();
}

void MainWindow::MinimizeIfSet() {
  if (settings_.IsOn(setting::kMinimize)) Minimize();
}

void MainWindow::ExchangeTopmost(bool topmost) {
  if (!settings_.IsOn(setting::kAlwaysOnTop)) return;
  if (topmost) {
    onTop_.OnTopSet(form);
  } else {
    onTop_.OnTopClear(form);
  }
  if (form.GetWindowState() == WindowState::Minimized) Minimize();
}

BoxAnswer MainWindow::MessageBox(const Text& MessageText, BoxCode MessageCode, const Text& MessageTitle) {
  if (!Asks(MessageCode) && (poll.Timer1.Ticking() || Timer2.Ticking())) {
    form.GetDispatcher().Post([=, this] { ShowMessage(MessageText, MessageCode, MessageTitle); });
    return BoxAnswer::Ok;
  }
  return ShowMessage(MessageText, MessageCode, MessageTitle);
}

BoxAnswer MainWindow::ShowMessage(const Text& text, BoxCode code, const Text& title) {
  const bool exchange = settings_.IsOn(setting::kAlwaysOnTop);
  if (exchange) onTop_.OnTopClear(form);
  const BoxAnswer button =
      form.GetDispatcher().WhileWaiting([&] { return platform_.messageBoxes.Show(text, code, title); });
  // The person may have ended the program meanwhile.
  if (exchange && form.GetLoaded()) onTop_.OnTopSet(form);
  return button;
}

void MainWindow::FocusKeepingStatus(TextBox& field) {
  if (field.SetFocus()) Text2.SetText(kKeepStatus);
}

bool MainWindow::TakeKeptStatus() {
  if (Text2.GetText() != kKeepStatus) return false;
  Text2.SetText(u"");
  return true;
}

}  // namespace quillbox
