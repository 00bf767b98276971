#pragma once

#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

#include "platform/forms/Form.h"
#include "platform/qt/widgets/FormView.h"

class QGroupBox;
class QLabel;

namespace quillbox {

class Label;
class Picture;

// The window of a dialog. Its layout decides the size; the middle stays where the form was centred.
class DialogView : public FormView {
 public:
  // What is to happen whenever somebody wants to see the dialog, also while it is open.
  enum class Coming { ToFrontWithFocus, WithoutFocus };
  DialogView(Form& form, const ViewTools& tools, Coming coming = Coming::ToFrontWithFocus)
      : FormView(form, tools), coming_(coming) {}
  void setVisible(bool visible) override;

 protected:
  void AppearOrGo() override;
  void FinishCentered();

 private:
  Coming coming_;
  unsigned shows_ = 0;
  QPointer<QWidget> from_;  // our window that was in front when the dialog came
};

// A frame with the caption of its control.
QGroupBox* MakeFrame(FormView& view, Picture& frame);
// An image that hands its clicks on. `size` in device-independent pixels.
QLabel* MakeImage(FormView& view, Picture& picture, const QIcon& icon, int size, const QString& name);

// A label in one line whatever its text, clicked like any other.
QLabel* MakeElidedLabel(FormView& view, Label& label);

// A tip of the view's own, shown while the control itself has none.
void GiveHint(FormView& view, const Control& control, QWidget& widget, const QString& hint);
// A label that is clicked like a link looks like one.
void LookLikeLink(QLabel& label);

// Keeps a colour of the widget in step with the palette of its surroundings, light or dark.
using ColorChoice = std::function<QColor(const QPalette&)>;
void Tint(QWidget& widget, QPalette::ColorRole role, ColorChoice choice);
// A colour between two; `share` of the second, 0 to 1.
QColor Blend(const QColor& one, const QColor& other, double share);

QFont Scaled(const QFont& font, double factor);
// The font, or a fixed one if its digits differ in width: a number that runs must not jump.
QFont DigitFont(const QFont& font);

// The widget is at least as wide as it would be with the widest of these captions, so that nothing moves when
// the caption changes.
void ReserveWidthFor(QWidget& widget, const QStringList& captions);

}  // namespace quillbox
