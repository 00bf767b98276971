#include "platform/qt/ports/QtDrops.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>

#include "platform/ports/DropText.h"
#include "platform/qt/base/QtText.h"

namespace quillbox {

QtDrops::QtDrops(DropText& texts) : texts_(texts) {
  qApp->installEventFilter(this);
  qApp->installNativeEventFilter(this);
}

QtDrops::~QtDrops() = default;

bool QtDrops::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
  if (type == "xcb_generic_event_t") texts_.See(message);
  return false;
}

bool QtDrops::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Drop || delivers_ || !watched->isWidgetType()) return false;
  auto& drop = static_cast<QDropEvent&>(*event);
  if (drop.source()) return false;
  texts_.Ask([this, target = QPointer<QObject>(watched), place = drop.position(),
              actions = drop.possibleActions(), buttons = drop.buttons(),
              modifiers = drop.modifiers()](const DropText::Content& content) {
    if (!target) return;
    QMimeData data;
    data.setText(ToQt(content.text));
    if (content.addresses)
      data.setData(QStringLiteral("text/uri-list"), QByteArray::fromStdString(*content.addresses));
    delivers_ = true;
    // QApplication knows no drop without a drag that has come in before.
    QDragEnterEvent enter(place.toPoint(), actions, &data, buttons, modifiers);
    QCoreApplication::sendEvent(target, &enter);
    QDropEvent arrived(place, actions, &data, buttons, modifiers);
    if (target && enter.isAccepted()) QCoreApplication::sendEvent(target, &arrived);
    delivers_ = false;
  });
  // For the widget this drag is over; it has drawn a caret for it, perhaps.
  QDragLeaveEvent left;
  QCoreApplication::sendEvent(watched, &left);
  // A copy: the other program keeps what it has, whatever becomes of it here.
  drop.setDropAction(Qt::CopyAction);
  drop.accept();
  return true;
}

}  // namespace quillbox
