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
  Picture picIcon;
  Label lblTitle;
  Label lblVersion;
  Label Label2;
  Label Label5;
  Label Label3;
  Label Label4;
  CommandButton Command1;

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
