#include "platform/qt/ports/TrayMenuView.h"

#include <QAction>
#include <QMouseEvent>
#include <QTimer>

#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"

namespace quillbox {

namespace {

// For a host that draws the menu itself: there an underscore is the mark, a doubled one is shown, and an
// ampersand is a plain character. Qt makes the first ampersand such a mark and leaves everything else as it
// is.
QString HostText(const QString& caption) {
  constexpr QChar kMark = u'&';
  QString text;
  bool marked = false;
  bool plain = false;
  for (qsizetype at = 0; at < caption.size(); ++at) {
    const QChar unit = caption[at];
    if (unit == kMark && at + 1 < caption.size() && caption[at + 1] != kMark) {
      if (!marked && !plain) {
        text += kMark;
        marked = true;
      }
      continue;
    }
    if (unit == kMark && at + 1 < caption.size()) ++at;
    if (unit == u'_') text += unit;
    plain = plain || unit == kMark;
    text += unit;
  }
  // Its first ampersand would become a mark: the mark goes to a character that nobody sees.
  if (plain && !marked) text.prepend(QStringLiteral("&\u200B"));
  return text;
}

// Tells of presses beside it.
class Popup : public QMenu {
 public:
  explicit Popup(const std::function<void(const QPoint&)>& rightPressBeside) : beside_(rightPressBeside) {}

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    const bool beside = event->button() == Qt::RightButton && !rect().contains(event->position().toPoint());
    const QPoint place = event->globalPosition().toPoint();
    QMenu::mousePressEvent(event);
    if (!beside) return;
    QTimer::singleShot(0, this, [this, place] {
      if (beside_) beside_(place);
    });
  }

 private:
  const std::function<void(const QPoint&)>& beside_;
};

}  // namespace

TrayMenuView::TrayMenuView(Dispatcher& dispatcher, MenuItem& root)
    : dispatcher_(dispatcher), menu_(std::make_unique<Popup>(RightPressBeside)) {
  menu_->setObjectName(QString::fromStdString(root.Name()));
  AddActions(*menu_, root);
}

TrayMenuView::~TrayMenuView() = default;

void TrayMenuView::AddActions(QMenu& menu, const MenuItem& parent) {
  for (MenuItem* item : parent.Children()) {
    QAction* action = nullptr;
    if (item->IsSeparator()) {
      action = menu.addSeparator();
    } else if (!item->Children().empty()) {
      QMenu* const sub = menu.addMenu(QString());
      AddActions(*sub, *item);
      action = sub->menuAction();
    } else {
      action = menu.addAction(QString());
      // A host asks once whether an item has a mark: when it sees it first.
      action->setCheckable(item->IsCheckable());
      QObject::connect(action, &QAction::triggered, menu_.get(), [this, item] {
        if (item->Click) dispatcher_.Dispatch(item->Click);
      });
    }
    action->setObjectName(QString::fromStdString(item->Name()));
    actions_.emplace_back(item, action);
  }
}

void TrayMenuView::Follow(bool forHost) {
  for (const auto& [item, action] : actions_) {
    action->setVisible(item->GetVisible());
    if (item->IsSeparator() || !item->GetVisible()) continue;
    // A tab would begin a shortcut's column; captions hold none.
    const QString caption = ToQt(item->GetCaption());
    action->setText(forHost ? HostText(caption) : caption);
    if (action->isCheckable()) action->setChecked(item->GetChecked());
    if (action->icon().isNull() == item->IsScript())
      action->setIcon(item->IsScript() ? NamedIcon("script") : QIcon());
  }
}

void TrayMenuView::OpenAt(const QPoint& place) {
  Follow(false);
  menu_->popup(place);
}

}  // namespace quillbox
