#pragma once

#include "core/settings/Norvane.h"
#include "core/window/ClipboardPoll.h"
#include "core/window/OnTop.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/Timer.h"
#include "platform/ports/Platform.h"

namespace quillbox {

// The pages of the main window, in the order of the tabs.
enum class Page { Clip = 0, Pad = 1, Calc = 2, Timer = 3, ToDo = 4 };

// What belongs to the main window as a whole: its way to the tray and back, its position, its topmost state,
// the message boxes, the row of buttons below the pages and the state that all pages share.
class MainWindow {
 public:
  MainWindow(Form& form, Norvane& settings, Platform& platform);

  Form& form;
  TabControl SSTab1;        // the five pages
  CommandButton Command47;  // opens the settings
  CommandButton Command48;  // opens the Info dialog
  CommandButton Command6;   // saves all and sends the window to the tray
  // "X": the next focus handler of a text field leaves the status label alone, a button has just written to
  // it.
  TextBox Text2;
  // "NoShow": the refresh of the ToDo-List shows no status word.
  TextBox Text4;
  ClipboardPoll poll;  // Timer1
  Timer Timer2;        // the clock of the Timer page

  // Where the controls of a page stand.
  Place On(Page page) { return {form, SSTab1, static_cast<int>(page)}; }

  // Every message box of the program, with the topmost state taken from the window while it is open. One
  // with an OK button alone that comes up within a timer's tick is shown when the tick has ended, so that the
  // clipboard is watched on while it is open.
  BoxAnswer MessageBox(const Text& MessageText, BoxCode MessageCode = BoxCode::Plain,
                       const Text& MessageTitle = {});
  // The same for a question: whether the person says Yes.
  bool Confirm(const Text& question, const Text& title, BoxCode code = BoxCode::InformationYesNo) {
    return MessageBox(question, code, title) == BoxAnswer::Yes;
  }

  // To the tray: the window reaches the minimised state, hides and is normal again, at its stored place.
  void Minimize() { form.SetWindowState(WindowState::Minimized); }
  // The same if the setting `Minimize` asks for it after a change of the clipboard.
  void MinimizeIfSet();
  // Gives the main window its topmost state, or takes it away, if the setting `AlwaysOnTop` is on. The rule
  // for whoever needs to come up above it.
  void ExchangeTopmost(bool topmost);
  OnTop& GetOnTop() { return onTop_; }

  // A button's status word stands: where the focus goes to `field`, its focus handler leaves the word alone.
  void FocusKeepingStatus(TextBox& field);
  // For that handler: whether such a word stands. Takes the mark away.
  bool TakeKeptStatus();

  // "Minimize Quillbox": saves all and keeps the position.
  void Command6_Click();
  // Deletes the completed tasks; saves the three lists. Given by the owner of the lists.
  Event<> RefreshToDo;
  Event<> SaveLists;
  // The window has gone to the tray.
  Event<> WentAway;

 private:
  void Form_Resize();
  BoxAnswer ShowMessage(const Text& text, BoxCode code, const Text& title);

  Norvane& settings_;
  Platform& platform_;
  OnTop onTop_;
};

}  // namespace quillbox
