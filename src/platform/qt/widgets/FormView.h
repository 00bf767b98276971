#pragma once

#include <QWidget>
#include <deque>
#include <functional>

#include "platform/forms/Form.h"

namespace quillbox {

class FieldClipboard;
class QtTips;

// What all views share.
struct ViewTools {
  QtTips& tips;
  FieldClipboard& clipboard;
  // Whether the forms are told how large windows and lists are; else they keep the sizes of their own.
  bool tellSizes = true;
};

// The window of a form: draws the form's controls and turns what a person does into calls on them. It
// remembers what it has drawn, and nothing else.
class FormView : public QWidget {
 public:
  FormView(Form& form, const ViewTools& tools);

  Form& GetForm() const { return form_; }
  const ViewTools& Tools() const { return tools_; }
  // Joins a control and the widget that shows it. `draw` is called when the control has changed.
  void Join(Control& control, QWidget& widget, std::function<void()> draw);
  // The widget that shows a control; null while none does.
  QWidget* WidgetOf(const Control& control) const;
  // The person asks for help.
  std::function<void()> Help;
  // Draws what has changed since the last time, and shows or hides the window.
  void Refresh();

 protected:
  // How the window appears and goes away; the main window has other ways while there is no tray.
  virtual void AppearOrGo();
  virtual void ShowWindow();
  // A window that isn't shown yet comes as its form says.
  void FollowTopmost();
  // Sizes the form after its window: when everything stands on it, and when that has grown.
  void Finish();

  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  bool event(QEvent* event) override;

 private:
  struct Joined {
    Control* control;
    QWidget* widget;
    std::function<void()> draw;
  };
  void Draw(const Joined& joined);
  void FollowFocus();
  // The form's, in pixels.
  QPoint Place() const;
  void TellPlace();
  const Joined* Of(const QObject* widget) const;

  Form& form_;
  const ViewTools& tools_;
  std::deque<Joined> joined_;  // grows while it is drawn: a page is made when it is first in front
  unsigned long drawn_ = 0;
  const Control* followed_ = nullptr;  // the focus that the window has taken over last
  bool drawing_ = false;
  bool above_ = false;
};

}  // namespace quillbox
