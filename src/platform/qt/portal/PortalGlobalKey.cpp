#include "platform/qt/portal/PortalGlobalKey.h"

#include <xkbcommon/xkbcommon.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QList>
#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/Trace.h"
#include "platform/qt/portal/PortalBus.h"
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
const QString kListed = QStringLiteral("shortcuts");

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

// The key as part of a name. Desktops keep a shortcut, with the key that it was first given, by its id, or by
// the token of its session where they don't know the program's name: another key needs other names.
QString NamedBy(const KeyCombination& key) {
  return Trigger(key).replace(QLatin1Char('+'), QLatin1Char('_'));
}

QString IdOf(const KeyCombination& key) { return QStringLiteral("find_") + NamedBy(key); }

QVariant ShortcutsFor(const KeyCombination& key) {
  return QVariant::fromValue(
      QList<PortalShortcut>{{IdOf(key),
                             {{QStringLiteral("description"), QStringLiteral("Find an entry in Quillbox")},
                              {QStringLiteral("preferred_trigger"), Trigger(key)}}}});
}

// Whether the shortcut is among those that the desktop says to have taken.
bool Lists(const QVariantMap& results, const QString& id) {
  const auto shortcuts = qdbus_cast<QList<PortalShortcut>>(results.value(kListed));
  return std::any_of(shortcuts.begin(), shortcuts.end(),
                     [&](const PortalShortcut& each) { return each.id == id; });
}

}  // namespace

PortalGlobalKey::~PortalGlobalKey() { CloseSession(); }

KeyBinding PortalGlobalKey::Bind(const KeyCombination& key) {
  Release();
  bus_ = portal::Bus();
  if (!bus_.isConnected()) return KeyBinding::Impossible;
  if (portal_.watchedServices().isEmpty()) {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    portal_.setConnection(bus_);
    portal_.addWatchedService(portal::kService);
    connect(&portal_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { Follow(owner); });
  }
  wanted_ = key;
  Start();
  return KeyBinding::Pending;
}

// A call that starts the portal would be answered by one whose name nobody had when we began to listen.
void PortalGlobalKey::Start() {
  AskBus("StartServiceByName", {portal::kService, uint{0}}, [this](const QDBusMessage&) {
    AskBus("GetNameOwner", {portal::kService}, [this](const QDBusMessage& owner) {
      if (owner.type() != QDBusMessage::ReplyMessage) return Settle(KeyBinding::Impossible);
      Follow(owner.arguments().value(0).toString());
    });
  });
}

void PortalGlobalKey::AskBus(const char* method, const QVariantList& arguments, const Replied& answered) {
  const QString bus = QStringLiteral("org.freedesktop.DBus");
  QDBusMessage call = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                     QLatin1String(method));
  call.setArguments(arguments);
  Call(call, answered);
}

void PortalGlobalKey::Call(const QDBusMessage& call, const Replied& answered) {
  starting_.reset(new QDBusPendingCallWatcher(bus_.asyncCall(call)));
  connect(starting_.get(), &QDBusPendingCallWatcher::finished, this,
          [answered](QDBusPendingCallWatcher* reply) { answered(reply->reply()); });
}

// The answer to Start and the watcher's word may come in any order.
void PortalGlobalKey::Follow(const QString& owner) {
  if (!wanted_ || owner == owner_) return;
  starting_.reset();
  owner_ = owner;
  CloseSession();
  if (owner.isEmpty()) return Settle(KeyBinding::Impossible);
  Call(portal::Introduction(), [this](const QDBusMessage&) { Begin(); });
}

void PortalGlobalKey::Release() {
  wanted_.reset();
  starting_.reset();
  owner_.clear();
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
  // Plasma 5 wants the shortcuts here; others pass over them.
  Ask("CreateSession", {},
      {{QStringLiteral("session_handle_token"), QStringLiteral("quillbox_") + NamedBy(*wanted_)},
       {kListed, ShortcutsFor(*wanted_)}},
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
  // Plasma 5 has them now; there the next call only opens the desktop's settings.
  if (Lists(created, IdOf(*wanted_))) return Settle(KeyBinding::Bound);
  Ask("BindShortcuts", {QVariant::fromValue(session_), ShortcutsFor(*wanted_), QString()}, {},
      [this](std::optional<uint> code, const QVariantMap& results) {
        // GNOME 48 lists what it has bound and calls that a failure all the same. Plasma 6 lists nothing when
        // the person has just agreed.
        const bool bound =
            results.contains(kListed) ? Lists(results, IdOf(*wanted_)) : code == portal::kGranted;
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
  if (session.path() != session_.path() || !wanted_ || id != IdOf(*wanted_)) return;
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
