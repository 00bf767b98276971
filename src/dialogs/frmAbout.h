#pragma once

#include "core/window/MainWindow.h"
#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"

namespace quillbox {

// The Info dialog. A click on one of its parts shows a technical fact in the line of the version.
class frmAbout {
 public:
  frmAbout(Dispatcher& dispatcher, MainWindow& window, Norvane& settings, SystemInfo& system,
           Clipboard& clipboard);

  Form form;
  Picture picIcon;         // the program's picture; a click shows the program folder
  Label lblTitle;          // the program's name; a click shows the version
  Label lblVersion;        // the version, or what a click has asked for; a click shows it in full
  Label Label2;            // who made the program
  Label Label5;            // the web address; a click copies it
  Label Label3;            // "i": a click shows the numbers of the running program
  Label Label4;            // "s": a click shows the version of the system
  CommandButton Command1;  // OK

 private:
  void Form_Load();
  void Label3_Click();
  void Label4_Click();
  void Label5_Click();
  // Puts the web address on the clipboard; false if the clipboard can't be opened.
  bool CopyAddress();

  MainWindow& window_;
  Norvane& settings_;
  SystemInfo& system_;
  Clipboard& clipboard_;
};

}  // namespace quillbox
