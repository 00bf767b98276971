#pragma once

#include <functional>

#include "core/window/MainWindow.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"

namespace quillbox {

// The introduction that opens at start unless the person has switched it off here.
class frmStartHelp {
 public:
  frmStartHelp(Dispatcher& dispatcher, MainWindow& window, Norvane& settings,
               const std::function<void()>& openAbout);

  Form form;
  Label Label2;
  Label Label1;
  Picture Image1;
  Picture Image2;
  TextBox Text1;
  CheckBox Check1;
  CommandButton Command1;

 private:
  void Form_Load();
  void Command1_Click();

  MainWindow& window_;
  Norvane& settings_;
};

}  // namespace quillbox
