#include "platform/qt/portal/PortalBus.h"

#include "platform/qt/portal/PortalRequest.h"

namespace quillbox::portal {

QDBusConnection Bus() {
  return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
}

QDBusMessage Introduction() {
  QDBusMessage call = QDBusMessage::createMethodCall(
      kService, kPath, QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"));
  call << QStringLiteral(QUILLBOX_APP_ID) << QVariantMap();
  return call;
}

}  // namespace quillbox::portal
