#pragma once

#include <QMenu>
#include <functional>
#include <memory>
#include <vector>

#include "platform/forms/Dispatcher.h"
#include "platform/forms/MenuItem.h"

namespace quillbox {

// The tray menu as a QMenu. The actions are made once and follow the items before each opening.
class TrayMenuView {
 public:
  TrayMenuView(Dispatcher& dispatcher, MenuItem& root);
  ~TrayMenuView();

  // Takes over captions, visibility and check marks.
  void Follow(bool forHost);
  void OpenAt(const QPoint& place);
  QMenu* Menu() const { return menu_.get(); }
  // A press of the right button beside the open menu has closed it, at this place of the screen. The press
  // reaches nobody else: an open menu takes the whole mouse.
  std::function<void(const QPoint&)> RightPressBeside;

 private:
  void AddActions(QMenu& menu, const MenuItem& parent);

  Dispatcher& dispatcher_;
  std::unique_ptr<QMenu> menu_;
  std::vector<std::pair<MenuItem*, QAction*>> actions_;
};

}  // namespace quillbox
