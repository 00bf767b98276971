#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace quillbox {

// Where the desktop's portal is found on the session bus.
namespace portal {
inline const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString kSession = QStringLiteral("org.freedesktop.portal.Session");
inline constexpr uint kGranted = 0;  // responses
inline constexpr uint kRefused = 1;
inline constexpr int kLongestAnswer = 5000;  // milliseconds, of the portal itself; a person takes longer
}  // namespace portal

// A call of the portal that is answered twice: at once by a request's name, and by that request when the
// desktop, or the person whom it asks, has decided.
class PortalRequest : public QObject {
  Q_OBJECT

 public:
  // The code of the response and what it brings; no code if the call itself has failed.
  using Answered = std::function<void(std::optional<uint> code, const QVariantMap& results)>;

  // Calls `method` with the arguments and behind them the options. `token` names the request, once a process.
  // `answered` is called once, on the event loop, unless this object has gone before or is to forget it.
  PortalRequest(QDBusConnection bus, const QString& interface, const QString& method, QVariantList arguments,
                QVariantMap options, const QString& token, Answered answered);
  // Answers nobody any more.
  void Forget() { answered_ = nullptr; }

 private Q_SLOTS:
  void OnResponse(uint code, const QVariantMap& results);

 private:
  void Answer(std::optional<uint> code, const QVariantMap& results);

  Answered answered_;
};

}  // namespace quillbox
