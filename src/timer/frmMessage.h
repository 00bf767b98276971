#pragma once

#include <functional>

#include "core/window/MainWindow.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Form.h"
#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"
#include "platform/forms/Timer.h"

namespace quillbox {

// Tells that the timer is due: above all windows, with a sound if one is chosen, and for three seconds
// without a button, so that no key that was meant for something else closes it.
class frmMessage {
 public:
  // `showAgainInTwoMinutes` sets the timer anew; the window then closes.
  frmMessage(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, Sound& sound,
             std::function<void()> showAgainInTwoMinutes);

  Form form;
  Picture Image1;          // the program's picture, at the left
  Picture Image2;          // the same at the right
  Picture Shape1;          // the frame around the message
  Picture Line1;           // the line below the head
  Label Label1;            // the program's name
  Label Label2;            // its maker
  Label Label3;            // the message
  Label Label4;            // the time at which the timer became due
  CommandButton Command1;  // OK
  CommandButton Command2;  // show again in 2 minutes
  Timer Timer1;            // one delay for the buttons, switched on by whoever shows the window

 private:
  void Form_Load();
  void Form_Unload();
  void Timer1_Timer();
  void Command1_Click();
  void Command2_Click();
  void OfferButtons(bool offered);

  MainWindow& window_;
  Norvane& settings_;
  Sound& sound_;
  std::function<void()> showAgainInTwoMinutes_;
};

}  // namespace quillbox
