#include "platform/qt/portal/PortalGlobalKey.h"

#include <xkbcommon/xkbcommon.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QList>
#include <array>
#include <string>
#include <utility>

#include "base/Trace.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {

// A shortcut as the portal has it: (sa{sv}).
struct PortalShortcut {
  QString id;
  QVariantMap properties;
};

static QDBusArgument& operator<<(QDBusArgument& to, const PortalShortcut& shortcut) {
  to.beginStructure();
  to << shortcut.id << shortcut.properties;
  to.endStructure();
  return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, PortalShortcut& shortcut) {
  from.beginStructure();
  from >> shortcut.id >> shortcut.properties;
  from.endStructure();
  return from;
}

namespace {

const QString kShortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString kId = QStringLiteral("find");

// As desktops tell each other shortcuts: CTRL+ALT+v, with the names of keysyms.
QString Trigger(const KeyCombination& key) {
  QString trigger;
  constexpr std::pair<std::uint8_t, const char*> kNames[] = {{modifier::kControl, "CTRL+"},
                                                             {modifier::kAlt, "ALT+"},
                                                             {modifier::kShift, "SHIFT+"},
                                                             {modifier::kMeta, "LOGO+"}};
  for (const auto& [bit, name] : kNames) {
    if ((key.modifiers & bit) != 0) trigger += QLatin1String(name);
  }
  std::array<char, 64> name{};
  xkb_keysym_get_name(KeysymOf(key), name.data(), name.size());
  return trigger + QLatin1String(name.data());
}

// Whether the desktop has given the shortcut a key.
bool IsBound(const QVariantMap& results) {
  const auto shortcuts = qdbus_cast<QList<PortalShortcut>>(results.value(QStringLiteral("shortcuts")));
  for (const PortalShortcut& each : shortcuts) {
    if (each.id == kId) return true;
  }
  return false;
}

}  // namespace

PortalGlobalKey::PortalGlobalKey(const QDBusConnection& bus) : bus_(bus) {}

PortalGlobalKey::~PortalGlobalKey() { CloseSession(); }

KeyBinding PortalGlobalKey::Bind(const KeyCombination& key) {
  Release();
  if (!bus_.isConnected()) return KeyBinding::Impossible;
  if (portal_.watchedServices().isEmpty()) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    portal_.setConnection(bus_);
    portal_.addWatchedService(portal::kService);
    connect(&portal_, &QDBusServiceWatcher::serviceRegistered, this, [this] { Begin(); });
    connect(&portal_, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
      if (!wanted_) return;
      CloseSession();
      Settle(KeyBinding::Impossible);
    });
  }
  wanted_ = key;
  Begin();
  return KeyBinding::Pending;
}

void PortalGlobalKey::Release() {
  wanted_.reset();
  request_.reset();
  CloseSession();
}

QString PortalGlobalKey::NewToken() { return QStringLiteral("quillboxkey%1").arg(++tokens_); }

void PortalGlobalKey::Ask(const char* method, const QVariantList& arguments, const QVariantMap& options,
                          PortalRequest::Answered answered) {
  request_.reset(new PortalRequest(bus_, kShortcuts, QLatin1String(method), arguments, options, NewToken(),
                                   std::move(answered)));
}

void PortalGlobalKey::Begin() {
  if (!wanted_) return;
  CloseSession();
  Ask("CreateSession", {}, {{QStringLiteral("session_handle_token"), NewToken()}},
      [this](std::optional<uint> code, const QVariantMap& results) {
        if (code == portal::kGranted) return BindIn(results);
        Settle(code ? KeyBinding::Refused : KeyBinding::Impossible);
      });
}

void PortalGlobalKey::BindIn(const QVariantMap& created) {
  session_ = QDBusObjectPath(created.value(QStringLiteral("session_handle")).toString());
  if (session_.path().isEmpty()) return Settle(KeyBinding::Refused);
  bus_.connect(portal::kService, session_.path(), portal::kSession, QStringLiteral("Closed"), this,
               SLOT(OnClosed()));
  // Anew with each session: a connection that was made while nobody had the portal's name brings nothing.
  bus_.connect(portal::kService, portal::kPath, kShortcuts, QStringLiteral("Activated"), this,
               SLOT(OnActivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
  const QList<PortalShortcut> shortcuts{
      {kId,
       {{QStringLiteral("description"), QStringLiteral("Find an entry in Quillbox")},
        {QStringLiteral("preferred_trigger"), Trigger(*wanted_)}}}};
  Ask("BindShortcuts", {QVariant::fromValue(session_), QVariant::fromValue(shortcuts), QString()}, {},
      [this](std::optional<uint> code, const QVariantMap& results) {
        const bool bound = code == portal::kGranted && IsBound(results);
        if (!bound) CloseSession();
        Settle(bound ? KeyBinding::Bound : KeyBinding::Refused);
      });
}

void PortalGlobalKey::Settle(KeyBinding binding) {
  request_.reset();
  TellChanged(binding);
}

void PortalGlobalKey::CloseSession() {
  if (session_.path().isEmpty()) return;
  bus_.disconnect(portal::kService, session_.path(), portal::kSession, QStringLiteral("Closed"), this,
                  SLOT(OnClosed()));
  bus_.disconnect(portal::kService, portal::kPath, kShortcuts, QStringLiteral("Activated"), this,
                  SLOT(OnActivated(QDBusObjectPath, QString, qulonglong, QVariantMap)));
  QDBusMessage close = QDBusMessage::createMethodCall(portal::kService, session_.path(), portal::kSession,
                                                      QStringLiteral("Close"));
  // A portal that has gone isn't called back for that.
  close.setAutoStartService(false);
  bus_.call(close, QDBus::NoBlock);
  session_ = {};
}

void PortalGlobalKey::OnActivated(const QDBusObjectPath& session, const QString& id, qulonglong,
                                  const QVariantMap& options) {
  if (session.path() != session_.path() || id != kId) return;
  // The right to come to the front, for whichever window comes up now: Qt takes it from there.
  const QString token = options.value(QStringLiteral("activation_token")).toString();
  if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
  TellPressed();
}

void PortalGlobalKey::OnClosed() {
  CloseSession();
  if (wanted_) Settle(KeyBinding::Refused);
}

}  // namespace quillbox
