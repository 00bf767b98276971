#include "platform/qt/portal/PortalSession.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QEventLoop>
#include <QTimer>
#include <utility>

#include "base/RuntimeError.h"
#include "platform/qt/portal/PortalBus.h"
#include "platform/qt/portal/PortalRequest.h"

namespace quillbox {

using namespace portal;

namespace {

const QString kRemoteDesktop = QStringLiteral("org.freedesktop.portal.RemoteDesktop");

constexpr uint kKeyboard = 1;              // among the types of devices
constexpr uint kUntilRevoked = 2;          // how long a permission is kept
constexpr int kLongestQuestion = 120'000;  // to the person, in milliseconds

constexpr const char* kWithdrawn = "The desktop has withdrawn the permission to type keys.";

[[noreturn]] void Fail(const char* words) { throw RuntimeError(errors::kDeviceError, words); }

}  // namespace

PortalSession::~PortalSession() { Close(); }

void PortalSession::WaitFor(const std::function<bool()>& done, int milliseconds) {
  QEventLoop loop;
  wake_ = [&loop] { loop.quit(); };
  bool late = false, gone = false;
  QTimer timer;
  timer.setSingleShot(true);
  connect(&timer, &QTimer::timeout, &loop, [&] { late = true, loop.quit(); });
  timer.start(milliseconds);
  QDBusServiceWatcher portal(kService, bus_, QDBusServiceWatcher::WatchForUnregistration);
  connect(&portal, &QDBusServiceWatcher::serviceUnregistered, &loop, [&] { gone = true, loop.quit(); });
  bool ending = false;
  while (!done() && !late && !gone && !wasClosed_ && !ending) ending = loop.exec() < 0;
  wake_ = nullptr;
  if (done()) return;
  if (wasClosed_) Fail(kWithdrawn);
  if (gone) Fail("The desktop's portal, which types the keys, has gone away.");
  if (late) Fail("The desktop's portal, which types the keys, doesn't answer.");
  Fail("The program ends.");
}

QDBusMessage PortalSession::Call(const QDBusMessage& call, int milliseconds) {
  const QDBusPendingCall pending = bus_.asyncCall(call, milliseconds);
  QDBusPendingCallWatcher watcher(pending);
  connect(&watcher, &QDBusPendingCallWatcher::finished, this, [this] {
    if (wake_) wake_();
  });
  WaitFor([&] { return watcher.isFinished(); }, milliseconds);
  return watcher.reply();
}

bool PortalSession::Offered() {
  bus_ = Bus();
  if (!bus_.isConnected()) return false;
  QDBusMessage get = QDBusMessage::createMethodCall(
      kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  get << kRemoteDesktop << QStringLiteral("AvailableDeviceTypes");
  try {
    Call(Introduction(), kLongestAnswer);
    const QDBusMessage answer = Call(get, kLongestAnswer);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return false;
    const QVariant types = answer.arguments().at(0).value<QDBusVariant>().variant();
    return (types.toUInt() & kKeyboard) != 0;
  } catch (const RuntimeError&) {
    return false;
  }
}

QVariantMap PortalSession::Request(const char* method, const QVariantList& arguments,
                                   const QVariantMap& options, int milliseconds) {
  bool answered = false;
  std::optional<uint> response;
  QVariantMap results;
  const PortalRequest request(bus_, kRemoteDesktop, QLatin1String(method), arguments, options,
                              QStringLiteral("quillbox%1").arg(++requests_),
                              [&](std::optional<uint> code, const QVariantMap& brought) {
                                answered = true;
                                response = code;
                                results = brought;
                                if (wake_) wake_();
                              });
  WaitFor([&] { return answered; }, milliseconds);
  if (!response) Fail("The desktop's portal, which types the keys, has failed.");
  if (*response == kRefused) Fail("The permission to type keys was refused.");
  if (*response != kGranted) Fail("The desktop has ended the question for the permission to type keys.");
  return results;
}

std::string PortalSession::Open(const std::string& token) {
  Close();
  wasClosed_ = false;
  const QString sessionToken = QStringLiteral("quillbox%1").arg(++requests_);
  const QVariantMap created =
      Request("CreateSession", {}, {{QStringLiteral("session_handle_token"), sessionToken}}, kLongestAnswer);
  handle_ = QDBusObjectPath(created.value(QStringLiteral("session_handle")).toString());
  if (!IsOpen()) Fail("The desktop's portal, which types the keys, has failed.");
  bus_.connect(kService, handle_.path(), kSession, QStringLiteral("Closed"), this, SLOT(OnClosed()));
  try {
    const QVariant session = QVariant::fromValue(handle_);
    QVariantMap devices{{QStringLiteral("types"), kKeyboard},
                        {QStringLiteral("persist_mode"), kUntilRevoked}};
    if (!token.empty()) devices.insert(QStringLiteral("restore_token"), QString::fromStdString(token));
    Request("SelectDevices", {session}, devices, kLongestAnswer);
    const QVariantMap started = Request("Start", {session, QString()}, {}, kLongestQuestion);
    if ((started.value(QStringLiteral("devices")).toUInt() & kKeyboard) == 0) {
      Fail("The permission to type keys was refused.");
    }
    return started.value(QStringLiteral("restore_token")).toString().toStdString();
  } catch (...) {
    Close();
    throw;
  }
}

void PortalSession::Close() {
  if (!IsOpen()) return;
  bus_.disconnect(kService, handle_.path(), kSession, QStringLiteral("Closed"), this, SLOT(OnClosed()));
  bus_.call(QDBusMessage::createMethodCall(kService, handle_.path(), kSession, QStringLiteral("Close")),
            QDBus::NoBlock);
  handle_ = {};
}

void PortalSession::Key(int keysym, bool press) {
  if (wasClosed_) Fail(kWithdrawn);
  if (!IsOpen()) return;
  QDBusMessage call =
      QDBusMessage::createMethodCall(kService, kPath, kRemoteDesktop, QStringLiteral("NotifyKeyboardKeysym"));
  call << QVariant::fromValue(handle_) << QVariantMap() << keysym << uint{press};
  const QDBusMessage answer = Call(call, kLongestAnswer);
  // The refusal of a key that came too late may be seen before the word that the session was closed.
  if (wasClosed_ || QDBusError(answer).type() == QDBusError::AccessDenied) Fail(kWithdrawn);
  if (answer.type() != QDBusMessage::ReplyMessage) Fail("The desktop's portal doesn't take the keys.");
}

void PortalSession::OnClosed() {
  wasClosed_ = true;
  handle_ = {};
  if (wake_) wake_();
}

}  // namespace quillbox
