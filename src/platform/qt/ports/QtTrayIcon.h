#pragma once

#include <QSystemTrayIcon>
#include <memory>

#include "platform/ports/TrayIcon.h"
#include "platform/qt/ports/TrayPresence.h"

class QMenu;

namespace quillbox {

// The tip as the shell reads it: a doubled ampersand is one, a single one is none.
Text ReadAmpersands(TextView tip);

// The icon over StatusNotifierItem, else XEmbed. Qt chooses between them once a process, so the icon is made
// when there is a tray, and waits for one that comes later.
class QtTrayIcon : public TrayIcon {
 public:
  explicit QtTrayIcon(TrayPresence& presence) : presence_(presence) {}

  void Add(TrayImage image, const Text& tip) override;
  void Change(TrayImage image, const Text& tip) override;
  void Delete() override;

  // Whether a person can see the icon now.
  bool Reachable() const;
  // A tray has come or gone.
  void Follow();
  // A press of the right button, which stands for one on the icon.
  void RightPress() { Tell(mouse::kRightDown); }
  // One that an open menu has taken, at this place of the screen: it counts if the
  // icon is there.
  void RightPressAt(const QPoint& place);
  // The menu that hosts draw themselves; made when such a host has the icon.
  std::function<QMenu*()> HostMenu;

 private:
  void Make();
  void Draw();
  void Activated(QSystemTrayIcon::ActivationReason reason);

  TrayPresence& presence_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  TrayPresence::Kind kind_ = TrayPresence::Kind::None;
  bool wanted_ = false;
  TrayImage image_ = TrayImage::Window;
  TrayImage drawnImage_ = TrayImage::Window;
  Text tip_;
  qint64 lastActivation_ = 0;  // milliseconds, for hosts that report no double clicks
};

}  // namespace quillbox
