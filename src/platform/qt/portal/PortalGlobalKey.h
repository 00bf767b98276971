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
//   Bind -> portal is started -> hears our name -> session is made -> key is bound -> Bound
//             |  no portal                           |  no               |  session closed, portal gone
//          Impossible                             Refused              Refused, Impossible
//
// Each Activated is a press. Where a portal comes later, all begins again.
class PortalGlobalKey : public QObject, public GlobalKey {
  Q_OBJECT

 public:
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
  using Replied = std::function<void(const QDBusMessage&)>;
  void AskBus(const char* method, const QVariantList& arguments, const Replied& answered);
  void Call(const QDBusMessage& call, const Replied& answered);
  void Follow(const QString& owner);
  void Begin();
  void BindIn(const QVariantMap& created);
  void Ask(const char* method, const QVariantList& arguments, const QVariantMap& options,
           PortalRequest::Answered answered);
  void Settle(KeyBinding binding);
  void CloseSession();
  QString NewToken();

  QDBusConnection bus_{QString()};  // connected with the first key
  QDBusServiceWatcher portal_;
  QString owner_;  // who has the portal's name, as far as we have followed
  std::optional<KeyCombination> wanted_;
  std::unique_ptr<QDBusPendingCallWatcher, Drop> starting_;
  std::unique_ptr<PortalRequest, Drop> request_;
  QDBusObjectPath session_;  // empty while there is none
  int tokens_ = 0;
};

}  // namespace quillbox
