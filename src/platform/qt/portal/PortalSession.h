#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <string>

namespace quillbox {

// A session of the desktop's portal (org.freedesktop.portal.RemoteDesktop) with a keyboard. A call that waits
// lets the program's own events go on meanwhile; it fails with RuntimeError errors::kDeviceError, in words
// for the person, also if the desktop ends the session, if the portal goes away or if this program ends
// meanwhile.
class PortalSession : public QObject {
  Q_OBJECT

 public:
  ~PortalSession() override;

  // Whether the desktop has a portal that hands out keyboards. Waits at most 5 s.
  bool Offered();

  // Asks for a keyboard, and the desktop asks the person unless `token` is good: then it waits at most 2
  // minutes. Returns the token for the next session, empty if the desktop gives none. The session isn't open
  // yet.
  std::string Open(const std::string& token);
  bool IsOpen() const { return !handle_.path().isEmpty(); }
  void Close();

  // Presses or releases a key; nothing if the session isn't open. Waits, at most 5 s, until the desktop has
  // taken it in: calls that don't wait for each other may overtake each other in the portal.
  void Key(int keysym, bool press);

 private Q_SLOTS:
  void OnClosed();

 private:
  // Calls and waits for the answer.
  QDBusMessage Call(const QDBusMessage& call, int milliseconds);
  // Calls what answers with a request, and waits for the response to that.
  QVariantMap Request(const char* method, const QVariantList& arguments, const QVariantMap& options,
                      int milliseconds);
  void WaitFor(const std::function<bool()>& done, int milliseconds);

  QDBusConnection bus_{QString()};  // connected with the first question
  QDBusObjectPath handle_;          // empty while no session is open
  bool wasClosed_ = false;          // by the desktop
  std::function<void()> wake_;
  int requests_ = 0;
};

}  // namespace quillbox
