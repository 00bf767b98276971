#include "platform/qt/portal/PortalRequest.h"

#include <QDBusMessage>
#include <utility>

namespace quillbox {

PortalRequest::PortalRequest(QDBusConnection bus, const QString& interface, const QString& method,
                             QVariantList arguments, QVariantMap options, const QString& token,
                             Answered answered)
    : answered_(std::move(answered)) {
  options.insert(QStringLiteral("handle_token"), token);
  arguments.append(options);
  // The request's name is known beforehand, so that its response can't come before somebody listens.
  const QString sender = bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
  const QString path = portal::kPath + QStringLiteral("/request/%1/%2").arg(sender, token);
  bus.connect(portal::kService, path, QStringLiteral("org.freedesktop.portal.Request"),
              QStringLiteral("Response"), this, SLOT(OnResponse(uint, QVariantMap)));
  QDBusMessage call = QDBusMessage::createMethodCall(portal::kService, portal::kPath, interface, method);
  call.setArguments(arguments);
  auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, portal::kLongestAnswer), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* reply) {
    if (reply->isError()) Answer(std::nullopt, {});
  });
}

void PortalRequest::OnResponse(uint code, const QVariantMap& results) { Answer(code, results); }

void PortalRequest::Answer(std::optional<uint> code, const QVariantMap& results) {
  if (const Answered answered = std::exchange(answered_, nullptr)) answered(code, results);
}

}  // namespace quillbox
