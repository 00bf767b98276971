#include "platform/qt/widgets/FormView.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QWindow>

#include "platform/forms/CommandButton.h"
#include "platform/forms/Dispatcher.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/base/WindowHints.h"
#include "platform/qt/ports/QtTips.h"
#include "platform/qt/widgets/FieldClipboard.h"
#include "platform/qt/widgets/FieldKeys.h"

namespace quillbox {

FormView::FormView(Form& form, const ViewTools& tools) : form_(form), tools_(tools) {
  setObjectName(QString::fromStdString(form.Name()));
  // Every window has the size that its content needs: none can be made larger.
  setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                 Qt::WindowCloseButtonHint);
  setWindowTitle(ToQt(form.GetCaption()));
  // The focus and the activation are the person's business, not a side effect of drawing.
  setAttribute(Qt::WA_ShowWithoutActivating, true);
}

void FormView::Join(Control& control, QWidget& widget, std::function<void()> draw) {
  if (widget.objectName().isEmpty()) widget.setObjectName(QString::fromStdString(control.Name()));
  widget.installEventFilter(this);
  tools_.clipboard.Serve(widget);
  joined_.push_back({&control, &widget, std::move(draw)});
  control.TakeDirty();
  Draw(joined_.back());
}

void FormView::Draw(const Joined& joined) {
  const bool before = std::exchange(drawing_, true);
  // A widget that nobody has shown or hidden yet appears with its page.
  const bool hidden =
      joined.widget->testAttribute(Qt::WA_WState_ExplicitShowHide) && joined.widget->isHidden();
  if (hidden == joined.control->GetVisible()) joined.widget->setVisible(joined.control->GetVisible());
  if (joined.widget->isEnabledTo(joined.widget->parentWidget()) != joined.control->GetEnabled()) {
    joined.widget->setEnabled(joined.control->GetEnabled());
  }
  const QString tip = ToQt(joined.control->GetToolTipText());
  if (joined.widget->accessibleDescription() != tip) joined.widget->setAccessibleDescription(tip);
  if (joined.draw) joined.draw();
  drawing_ = before;
}

void FormView::Finish() {
  adjustSize();
  setFixedSize(sizeHint().expandedTo(minimumSizeHint()));
  if (tools_.tellSizes) form_.SetSize(width() * kTwipsPerPixel, height() * kTwipsPerPixel);
}

void FormView::Refresh() {
  if (form_.GetVisible() || isVisible()) {
    if (drawn_ != form_.Revision()) {
      drawn_ = form_.Revision();
      // What the focus is to go to must be there before what it leaves goes away.
      for (std::size_t i = 0; i < joined_.size(); ++i) {
        if (joined_[i].control->HasFocus() && joined_[i].control->TakeDirty()) Draw(joined_[i]);
      }
      FollowFocus();
      for (std::size_t i = 0; i < joined_.size(); ++i) {
        if (joined_[i].control->TakeDirty()) Draw(joined_[i]);
      }
      if (pos() != Place()) move(Place());
      if (windowTitle() != ToQt(form_.GetCaption())) setWindowTitle(ToQt(form_.GetCaption()));
    }
    FollowFocus();
  }
  AppearOrGo();
  if (isVisible()) FollowTopmost();
}

void FormView::AppearOrGo() {
  if (form_.GetVisible() == isVisible()) return;
  if (form_.GetVisible()) {
    ShowWindow();
  } else {
    hide();
  }
}

void FormView::ShowWindow() {
  // A window that goes away under a click leaves its focus to another widget.
  followed_ = nullptr;
  FollowFocus();
  FollowTopmost();
  const QPoint place = Place();
  move(place);
  // The place is the frame's. A window that comes back has no frame yet, and Qt would put its content there.
  if (windowHandle()) windowHandle()->setFramePosition(place);
  show();
}

void FormView::FollowTopmost() {
  if (above_ == form_.GetTopmost()) return;
  above_ = form_.GetTopmost();
  SetAbove(*this, above_);
  // Above the others at once, as it was asked for.
  if (above_ && isVisible()) raise();
}

void FormView::FollowFocus() {
  const Control* const focused = form_.GetDispatcher().Focused();
  // Only a change is followed: between two, a person may go through the labels, which the form knows nothing
  // of.
  if (focused == followed_) return;
  // One that nobody can see yet is followed when it appears.
  followed_ = nullptr;
  if (!focused) return;
  for (const Joined& joined : joined_) {
    if (joined.control == focused && joined.control->IsReachable()) {
      followed_ = focused;
      if (focusWidget() == joined.widget) return;
      const bool before = std::exchange(drawing_, true);
      joined.widget->setFocus(Qt::OtherFocusReason);
      drawing_ = before;
    }
  }
}

const FormView::Joined* FormView::Of(const QObject* widget) const {
  for (const Joined& joined : joined_) {
    if (joined.widget == widget) return &joined;
  }
  return nullptr;
}

QWidget* FormView::WidgetOf(const Control& control) const {
  for (const Joined& joined : joined_) {
    if (joined.control == &control) return joined.widget;
  }
  return nullptr;
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  // The window manager may tell the size of its frame later than where it has put the window.
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) TellPlace();
  if (event->type() == QEvent::FocusIn && !drawing_) {
    const Joined* const joined = Of(watched);
    // Another program's coming and going changes nothing: the control has the focus still.
    if (joined && !joined->control->HasFocus()) joined->control->PersonFocus();
  } else if (event->type() == QEvent::ToolTip) {
    if (const Joined* const joined = Of(watched)) {
      tools_.tips.Show(joined->control->GetToolTipText(), static_cast<QHelpEvent*>(event)->globalPos(),
                       *joined->widget);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void FormView::closeEvent(QCloseEvent* event) {
  event->ignore();
  form_.PersonClose();
}

void FormView::keyPressEvent(QKeyEvent* event) {
  const KeyEvent key = KeyOf(*event);
  if (event->key() == Qt::Key_F1) {
    if (Help) Help();
  } else if (key.code == keys::kEscape || key.code == keys::kEnter) {
    // What no widget has taken is the form's: for the control with the focus, the default or the cancel
    // button.
    Control* const focused = form_.GetDispatcher().Focused();
    CommandButton* const button = key.code == keys::kEscape ? form_.CancelButton() : form_.DefaultButton();
    if (focused && &focused->Owner() == &form_) {
      focused->PersonKey(key);
    } else if (button && button->IsReachable()) {
      button->PersonClick();
    }
  } else {
    QWidget::keyPressEvent(event);
  }
}

void FormView::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (!drawing_ && event->spontaneous()) TellPlace();
}

QPoint FormView::Place() const { return {form_.GetLeft() / kTwipsPerPixel, form_.GetTop() / kTwipsPerPixel}; }

void FormView::TellPlace() {
  if (!WindowsHavePlaces()) return;
  if (!isVisible() || isMinimized()) return;
  // A place that is no whole number of pixels stays as it is until somebody moves the window.
  if (pos() == Place()) return;
  form_.PersonMove(pos().x() * kTwipsPerPixel, pos().y() * kTwipsPerPixel);
}

bool FormView::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    // Coming back from another form of the program.
    Dispatcher& dispatcher = form_.GetDispatcher();
    if (dispatcher.Focused() && &dispatcher.Focused()->Owner() != &form_) dispatcher.Activate(form_);
  }
  return QWidget::event(event);
}

}  // namespace quillbox
