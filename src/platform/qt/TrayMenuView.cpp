#include "platform/qt/TrayMenuView.h"

#include <QAction>

#include "platform/qt/QtText.h"

namespace quillbox {

TrayMenuView::TrayMenuView(Dispatcher& dispatcher, MenuItem& root)
    : dispatcher_(dispatcher), menu_(std::make_unique<QMenu>()) {
  menu_->setObjectName(QString::fromStdString(root.Name()));
  AddActions(*menu_, root);
  QObject::connect(menu_.get(), &QMenu::aboutToShow, menu_.get(), [this] {
    if (following_ || !BeforeHostOpens) return;
    BeforeHostOpens();
    Follow();
  });
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
      QObject::connect(action, &QAction::triggered, menu_.get(), [this, item] {
        if (item->Click) dispatcher_.Dispatch(item->Click);
      });
    }
    action->setObjectName(QString::fromStdString(item->Name()));
    actions_.emplace_back(item, action);
  }
}

void TrayMenuView::Follow() {
  for (const auto& [item, action] : actions_) {
    action->setVisible(item->GetVisible());
    if (item->IsSeparator() || !item->GetVisible()) continue;
    // A tab would begin a shortcut's column; captions hold none.
    action->setText(ToQt(item->GetCaption()));
    if (item->Name() == "mnuOnTop") {
      action->setCheckable(true);
      action->setChecked(item->GetChecked());
    }
  }
}

void TrayMenuView::OpenAt(const QPoint& place) {
  Follow();
  following_ = true;
  menu_->popup(place);
  following_ = false;
}

}  // namespace quillbox
