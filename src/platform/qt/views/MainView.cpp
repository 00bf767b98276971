#include "platform/qt/views/MainView.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindowStateChangeEvent>
#include <algorithm>

#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/base/WindowHints.h"
#include "platform/qt/views/CalcView.h"
#include "platform/qt/views/ClipView.h"
#include "platform/qt/views/PadView.h"
#include "platform/qt/views/TimerView.h"
#include "platform/qt/views/ToDoView.h"
#include "platform/qt/widgets/Bindings.h"

namespace quillbox {

namespace {

// A window that is mapped as a minimised one is a normal one first under KWin.
constexpr int kSettleMilliseconds = 200;

}  // namespace

MainView::MainView(frmTray& program, const ViewTools& tools, std::function<bool()> trayReachable)
    : FormView(program.form, tools), program_(program), trayReachable_(std::move(trayReachable)) {
  setWindowIcon(WindowIcon());
  auto* const layout = new QVBoxLayout(this);
  tabs_ = new QTabBar(this);
  tabs_->setExpanding(false);
  tabs_->setDocumentMode(false);
  tabs_->setFocusPolicy(Qt::StrongFocus);
  tabs_->setAccessibleName(tr("Tools"));
  TabControl& tabs = program_.window.SSTab1;
  for (const Text& caption : tabs.Captions()) tabs_->addTab(ToQt(caption));
  stack_ = new QStackedWidget(this);
  for (std::size_t page = 0; page < made_.size(); ++page) stack_->addWidget(new QWidget(stack_));
  // Room for the largest page, whichever has been made: the Timer's two buttons are the widest row.
  const QFontMetrics metrics = fontMetrics();
  stack_->setMinimumSize(metrics.horizontalAdvance(
                             QStringLiteral("Activate Alarm Clock  Set Alarm Clock to next full quarter")) +
                             8 * metrics.height(),
                         29 * metrics.height());
  layout->addWidget(tabs_);
  layout->addWidget(stack_, 1);

  buttons_ = {MakeButton(*this, program_.window.Command47), MakeButton(*this, program_.window.Command48),
              MakeButton(*this, program_.window.Command6)};
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(buttons_[0]);
  buttons->addWidget(buttons_[1]);
  buttons->addStretch(1);
  buttons->addWidget(buttons_[2]);
  layout->addLayout(buttons);

  connect(tabs_, &QTabBar::currentChanged, this, [&tabs](int page) {
    if (tabs.GetTab() != page) tabs.PersonTab(page);
  });
  Join(tabs, *tabs_, [this, &tabs] { ShowPage(tabs.GetTab()); });
  // Also on a keyboard with other letters.
  const auto* const find = new QShortcut(QKeySequence(QKeySequence::Find), this);
  connect(find, &QShortcut::activated, this, [this] { GetForm().PersonFind(); });
  Finish();
}

QWidget* MainView::MakePage(int page) {
  switch (static_cast<Page>(page)) {
    case Page::Clip:
      return MakeClipPage(*this, program_.clipPage, program_.clip);
    case Page::Pad:
      return MakePadPage(*this, program_.padPage, program_.pad);
    case Page::Calc:
      return MakeCalcPage(*this, program_.calcPage);
    case Page::Timer:
      return MakeTimerPage(*this, program_.timerPage);
    case Page::ToDo:
      return MakeToDoPage(*this, program_.toDoPage);
  }
  return nullptr;
}

void MainView::ShowPage(int page) {
  if (!made_[static_cast<std::size_t>(page)]) {
    made_[static_cast<std::size_t>(page)] = true;
    QWidget* const placeholder = stack_->widget(page);
    auto* const layout = new QVBoxLayout(placeholder);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(MakePage(page));
    // The row of buttons comes behind the page: behind its last control, which may have parts without the
    // focus.
    QWidget* before = previousInFocusChain();
    while (before != this && before->focusPolicy() == Qt::NoFocus) before = before->previousInFocusChain();
    for (QWidget* button : buttons_) {
      setTabOrder(before, button);
      before = button;
    }
    const QSize needed = placeholder->minimumSizeHint();
    if (isVisible() && needed.expandedTo(stack_->minimumSize()) != stack_->minimumSize()) Grow();
  }
  if (tabs_->currentIndex() != page) tabs_->setCurrentIndex(page);
  stack_->setCurrentIndex(page);
}

void MainView::Grow() {
  const QRect frame = frameGeometry();
  const QSize before = size();
  Finish();
  // A change of size takes the form back to its stored place. It stays where it has been dragged; what would
  // leave the screen only now is moved back.
  QRect grown(frame.topLeft(), frame.size() + size() - before);
  const QRect area = screen()->availableGeometry();
  if (frame.right() <= area.right()) grown.moveRight(std::min(grown.right(), area.right()));
  if (frame.bottom() <= area.bottom()) grown.moveBottom(std::min(grown.bottom(), area.bottom()));
  grown.moveTopLeft({std::max(grown.left(), std::min(frame.left(), area.left())),
                     std::max(grown.top(), std::min(frame.top(), area.top()))});
  GetForm().Move(grown.left() * kTwipsPerPixel, grown.top() * kTwipsPerPixel);
}

void MainView::AppearOrGo() {
  const bool wanted = GetForm().GetVisible();
  if (wanted) {
    inTaskbar_ = false;
    if (!isVisible() || isMinimized()) {
      setWindowState(windowState() & ~Qt::WindowMinimized);
      ShowWindow();
    }
  } else if (trayReachable_()) {
    inTaskbar_ = false;
    if (isVisible()) hide();
  } else if (!inTaskbar_) {
    inTaskbar_ = true;
    SetSkipTaskbar(*this, false);
    showMinimized();
  }
}

void MainView::ShowWindow() {
  // It is reached through its icon; without one it must stand in the task bar.
  const bool skip = trayReachable_();
  seen_ = false;
  FollowTopmost();
  SetSkipTaskbar(*this, skip);
  FormView::ShowWindow();
  // Where "Always on Top" was switched while it was hidden, Qt has made the window anew.
  SetSkipTaskbar(*this, skip);
}

void MainView::FollowTray() {
  if (isVisible()) SetSkipTaskbar(*this, trayReachable_());
  Refresh();
}

void MainView::BringUp() { ActivateWindow(*this); }

void MainView::changeEvent(QEvent* event) {
  FormView::changeEvent(event);
  if (event->type() != QEvent::WindowStateChange) return;
  Form& form = GetForm();
  if (isMinimized() && form.GetVisible()) {
    // A window manager that lags behind may tell of what went before the window was to appear.
    if (!seen_) return;
    // The minimise box is a way to the tray.
    form.GetDispatcher().Dispatch([&form] { form.SetWindowState(WindowState::Minimized); });
  } else if (!isMinimized() && inTaskbar_) {
    // Brought back from the task bar, unless this is only a step on the way there.
    QTimer::singleShot(kSettleMilliseconds, this, [this] { FollowReturn(); });
  }
}

void MainView::paintEvent(QPaintEvent* event) {
  seen_ = true;
  FormView::paintEvent(event);
}

void MainView::FollowReturn() {
  Form& form = GetForm();
  if (inTaskbar_ && !isMinimized()) form.GetDispatcher().Dispatch([&form] { form.Show(); });
}

void MainView::closeEvent(QCloseEvent* event) {
  // A person may be quicker than the wait for what lasts.
  FollowReturn();
  FormView::closeEvent(event);
}

void MainView::contextMenuEvent(QContextMenuEvent* event) {
  // Nowhere else could the program be ended. Fields have menus of their own, which don't come here.
  if (!trayReachable_() && MenuWithoutTray) {
    MenuWithoutTray();
  } else {
    FormView::contextMenuEvent(event);
  }
}

void MainView::keyPressEvent(QKeyEvent* event) {
  TabControl& tabs = program_.window.SSTab1;
  const int count = static_cast<int>(tabs.Captions().size());
  const bool control = event->modifiers().testFlag(Qt::ControlModifier);
  if (control && event->key() == Qt::Key_Tab) {
    tabs.PersonTab((tabs.GetTab() + 1) % count);
  } else if (control && event->key() == Qt::Key_Backtab) {
    tabs.PersonTab((tabs.GetTab() + count - 1) % count);
  } else {
    FormView::keyPressEvent(event);
  }
}

}  // namespace quillbox
