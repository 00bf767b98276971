#pragma once

#include <QLineEdit>

#include "platform/forms/KeyBox.h"

class QKeyEvent;

namespace quillbox {

// The combination of an event; no key for one that can't be named, or for modifiers alone.
KeyCombination CombinationOf(const QKeyEvent& event);

// Shows a KeyBox and hands each combination that is pressed over to it, but for the keys with which a person
// goes on: Tab, Enter, Escape and F1.
class KeyField : public QLineEdit {
 public:
  KeyField(QWidget* parent, KeyBox& box);
  void Draw();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  KeyBox& box_;
};

}  // namespace quillbox
