#include "platform/qt/ports/QtTrayIcon.h"

#include <QApplication>
#include <QDateTime>
#include <QIcon>
#include <QTextDocument>

#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"

namespace quillbox {

Text ReadAmpersands(TextView tip) {
  Text read;
  for (std::size_t at = 0; at < tip.size(); ++at) {
    // An ampersand is a mark for what follows it, another ampersand included.
    if (tip[at] == u'&' && ++at == tip.size()) break;
    read += tip[at];
  }
  return read;
}

void QtTrayIcon::Add(TrayImage image, const Text& tip) {
  wanted_ = true;
  image_ = image;
  tip_ = tip;
  Make();
}

void QtTrayIcon::Change(TrayImage image, const Text& tip) {
  image_ = image;
  if (tip_ != tip) {
    tip_ = tip;
    Draw();
  } else if (icon_ && drawnImage_ != image_) {
    Draw();
  }
}

void QtTrayIcon::Delete() {
  wanted_ = false;
  icon_.reset();
}

bool QtTrayIcon::Reachable() const { return icon_ && presence_.Has(kind_); }

void QtTrayIcon::Follow() {
  if (wanted_) Make();
}

void QtTrayIcon::Make() {
  if (icon_ || presence_.Best() == TrayPresence::Kind::None) return;
  kind_ = presence_.Best();
  icon_ = std::make_unique<QSystemTrayIcon>();
  QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                   [this](QSystemTrayIcon::ActivationReason reason) { Activated(reason); });
  if (kind_ == TrayPresence::Kind::StatusNotifier && HostMenu) icon_->setContextMenu(HostMenu());
  icon_->setIcon(TrayImageIcon(image_));
  drawnImage_ = image_;
  Draw();
  icon_->show();
}

void QtTrayIcon::Draw() {
  if (!icon_) return;
  if (drawnImage_ != image_) {
    drawnImage_ = image_;
    icon_->setIcon(TrayImageIcon(image_));
  }
  QString tip = ToQt(ReadAmpersands(tip_));
  // Where Qt draws the tip itself it must not take a copied text for markup.
  if (kind_ == TrayPresence::Kind::XEmbed && Qt::mightBeRichText(tip)) tip = Qt::convertFromPlainText(tip);
  if (icon_->toolTip() != tip) icon_->setToolTip(tip);
}

void QtTrayIcon::RightPressAt(const QPoint& place) {
  if (icon_ && icon_->geometry().contains(place)) RightPress();
}

void QtTrayIcon::Activated(QSystemTrayIcon::ActivationReason reason) {
  switch (reason) {
    case QSystemTrayIcon::Context:
      // A host that draws the exported menu by itself doesn't ask for one.
      Tell(mouse::kRightDown);
      break;
    case QSystemTrayIcon::DoubleClick:
      lastActivation_ = 0;
      Tell(mouse::kLeftDouble);
      break;
    case QSystemTrayIcon::Trigger: {
      const qint64 now = QDateTime::currentMSecsSinceEpoch();
      const bool second = now - lastActivation_ < QApplication::doubleClickInterval();
      lastActivation_ = second ? 0 : now;
      Tell(second && kind_ == TrayPresence::Kind::StatusNotifier ? mouse::kLeftDouble : mouse::kLeftDown);
      break;
    }
    default:
      break;
  }
}

}  // namespace quillbox
