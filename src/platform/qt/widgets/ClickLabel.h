#pragma once

#include <QLabel>

namespace quillbox {

class Control;

// A label or an image that hands its clicks on. One with something to click is reached by keyboard too, where
// Enter and Space click it; the form knows nothing of that focus, since its labels never take one.
class ClickLabel : public QLabel {
 public:
  ClickLabel(QWidget* parent, Control& control);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Control& control_;
  bool pressed_ = false;
};

}  // namespace quillbox
