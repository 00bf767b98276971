#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

#include "platform/ports/GlobalKey.h"
#include "platform/qt/portal/PortalRequest.h"

namespace quillbox {

// The key through the desktop's portal (org.freedesktop.portal.GlobalShortcuts), which asks the person where
// it wants to, and may give another key than was asked for. A portal that comes later than we do, or comes
// back, is asked then.
//
//   Bind -> portal is started -> session is made -> key is bound -> Bound; each Activated is a press
//             |  no portal        |  no        |  session closed, portal gone
//          Impossible          Refused      Refused, Impossible       a portal comes: from the start
class PortalGlobalKey : public QObject, public GlobalKey {
  Q_OBJECT

 public:
  explicit PortalGlobalKey(const QDBusConnection& bus);
  ~PortalGlobalKey() override;

  // Pending, or Impossible without a session bus.
  KeyBinding Bind(const KeyCombination& key) override;
  void Release() override;

 private Q_SLOTS:
  void OnActivated(const QDBusObjectPath& session, const QString& id, qulonglong time,
                   const QVariantMap& options);
  void OnClosed();

 private:
  // It may be answering right now.
  struct Drop {
    void operator()(PortalRequest* request) const {
      request->Forget();
      request->deleteLater();
    }
    void operator()(QDBusPendingCallWatcher* call) const {
      call->disconnect();
      call->deleteLater();
    }
  };

  void Start();
  void AskBus(const char* method, const QVariantList& arguments,
              const std::function<void(const QDBusMessage&)>& answered);
  void Follow(const QString& owner);
  void Begin();
  void BindIn(const QVariantMap& created);
  void Ask(const char* method, const QVariantList& arguments, const QVariantMap& options,
           PortalRequest::Answered answered);
  void Settle(KeyBinding binding);
  void CloseSession();
  QString NewToken();

  QDBusConnection bus_;
  QDBusServiceWatcher portal_;
  QString owner_;  // who has the portal's name, as far as we have followed
  std::optional<KeyCombination> wanted_;
  std::unique_ptr<QDBusPendingCallWatcher, Drop> starting_;
  std::unique_ptr<PortalRequest, Drop> request_;
  QDBusObjectPath session_;  // empty while there is none
  int tokens_ = 0;
};

}  // namespace quillbox
