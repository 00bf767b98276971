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
  // A click on any of the heading opens the Info dialog.
  Label Label2;            // the maker's name
  Label Label1;            // the program's name
  Picture Image1;          // the program's picture, at the left
  Picture Image2;          // the same at the right
  TextBox Text1;           // the introduction
  CheckBox Check1;         // show it at every start
  CommandButton Command1;  // OK

 private:
  void Form_Load();
  void Command1_Click();

  MainWindow& window_;
  Norvane& settings_;
};

}  // namespace quillbox
