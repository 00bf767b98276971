#include "platform/qt/portal/PortalSession.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QEventLoop>
#include <QTimer>
#include <utility>

#include "base/RuntimeError.h"

namespace quillbox {

namespace {

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kRemoteDesktop = QStringLiteral("org.freedesktop.portal.RemoteDesktop");
const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");
const QString kSession = QStringLiteral("org.freedesktop.portal.Session");

constexpr uint kKeyboard = 1;      // among the types of devices
constexpr uint kUntilRevoked = 2;  // how long a permission is kept
constexpr uint kGranted = 0;       // responses
constexpr uint kRefused = 1;

constexpr int kLongestAnswer = 5000;
constexpr int kLongestQuestion = 120'000;  // to the person

constexpr const char* kWithdrawn = "The desktop has withdrawn the permission to type keys.";

[[noreturn]] void Fail(const char* words) { throw RuntimeError(errors::kDeviceError, words); }

}  // namespace

PortalSession::PortalSession(const QDBusConnection& bus) : bus_(bus) {}

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
  if (!bus_.isConnected()) return false;
  QDBusMessage get = QDBusMessage::createMethodCall(
      kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  get << kRemoteDesktop << QStringLiteral("AvailableDeviceTypes");
  try {
    const QDBusMessage answer = Call(get, kLongestAnswer);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return false;
    const QVariant types = answer.arguments().at(0).value<QDBusVariant>().variant();
    return (types.toUInt() & kKeyboard) != 0;
  } catch (const RuntimeError&) {
    return false;
  }
}

QVariantMap PortalSession::Request(const char* method, QVariantList arguments, QVariantMap options,
                                   int milliseconds) {
  const QString token = QStringLiteral("quillbox%1").arg(++requests_);
  options.insert(QStringLiteral("handle_token"), token);
  arguments.append(options);
  // The request's name is known beforehand, so that its response can't come before somebody listens.
  const QString sender = bus_.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
  const QString path = kPath + QStringLiteral("/request/%1/%2").arg(sender, token);
  const QString response = QStringLiteral("Response");
  bus_.connect(kService, path, kRequest, response, this, SLOT(OnResponse(uint, QVariantMap)));
  const auto leave = [&] {
    bus_.disconnect(kService, path, kRequest, response, this, SLOT(OnResponse(uint, QVariantMap)));
  };
  response_.reset();
  QDBusMessage call =
      QDBusMessage::createMethodCall(kService, kPath, kRemoteDesktop, QString::fromLatin1(method));
  call.setArguments(arguments);
  try {
    if (Call(call, kLongestAnswer).type() != QDBusMessage::ReplyMessage) {
      Fail("The desktop's portal, which types the keys, has failed.");
    }
    WaitFor([this] { return response_.has_value(); }, milliseconds);
  } catch (...) {
    leave();
    throw;
  }
  leave();
  if (*response_ == kRefused) Fail("The permission to type keys was refused.");
  if (*response_ != kGranted) Fail("The desktop has ended the question for the permission to type keys.");
  return std::exchange(results_, {});
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
  lastKey_.reset();
}

void PortalSession::Key(int keysym, bool press) {
  if (!IsOpen()) return;
  QDBusMessage call =
      QDBusMessage::createMethodCall(kService, kPath, kRemoteDesktop, QStringLiteral("NotifyKeyboardKeysym"));
  call << QVariant::fromValue(handle_) << QVariantMap() << keysym << uint{press};
  lastKey_ = bus_.asyncCall(call, kLongestAnswer);
}

void PortalSession::Sync() {
  if (wasClosed_) Fail(kWithdrawn);
  if (!lastKey_) return;
  QDBusPendingCallWatcher watcher(*lastKey_);
  connect(&watcher, &QDBusPendingCallWatcher::finished, this, [this] {
    if (wake_) wake_();
  });
  WaitFor([&] { return watcher.isFinished(); }, kLongestAnswer);
  // The refusal of a key that came too late may be seen before the word that the session was closed.
  if (wasClosed_ || watcher.error().type() == QDBusError::AccessDenied) Fail(kWithdrawn);
  if (watcher.isError()) Fail("The desktop's portal doesn't take the keys.");
}

void PortalSession::OnResponse(uint code, const QVariantMap& results) {
  response_ = code;
  results_ = results;
  if (wake_) wake_();
}

void PortalSession::OnClosed() {
  wasClosed_ = true;
  handle_ = {};
  if (wake_) wake_();
}

}  // namespace quillbox
