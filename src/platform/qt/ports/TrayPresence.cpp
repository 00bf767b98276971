#include "platform/qt/ports/TrayPresence.h"

#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <QAbstractNativeEventFilter>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

namespace quillbox {

namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
// What the names of hosts begin with, and what a bus can watch of that: whole parts of a name only.
const QString kHost = QStringLiteral("org.kde.StatusNotifierHost");
const QString kWatcherAndHosts = QStringLiteral("org.kde*");
// A tray's coming is several steps: the owner first, then what makes it usable.
constexpr int kSettleMilliseconds = 200;
constexpr const char* kKded[] = {"org.kde.kded5", "org.kde.kded6"};

xcb_connection_t* Connection() {
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

xcb_atom_t Intern(xcb_connection_t* connection, const std::string& name) {
  xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr);
  const xcb_atom_t atom = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  std::free(reply);
  return atom;
}

// Plasma's watcher is a daemon of its own that runs without a panel too, says then as well that there is a
// host, and tells nobody when one comes or goes. A panel that watches by itself may have no name as a host.
bool IsKded(const QDBusConnectionInterface& bus) {
  const QString watcher = bus.serviceOwner(kWatcher);
  return std::any_of(std::begin(kKded), std::end(kKded), [&](const char* name) {
    return bus.serviceOwner(QLatin1String(name)).value() == watcher;
  });
}

bool HasHostName(const QDBusConnectionInterface& bus) {
  const QStringList names = bus.registeredServiceNames();
  return std::any_of(names.begin(), names.end(), [](const QString& name) { return name.startsWith(kHost); });
}

}  // namespace

// Watches who owns the tray's selection.
class TrayPresence::TrayWindowFilter : public QAbstractNativeEventFilter {
 public:
  explicit TrayWindowFilter(std::function<void()> changed)
      : changed_(std::move(changed)), connection_(Connection()) {
    if (!connection_) return;
    selection_ = Intern(connection_, "_NET_SYSTEM_TRAY_S0");
    const xcb_query_extension_reply_t* const fixes = xcb_get_extension_data(connection_, &xcb_xfixes_id);
    if (!fixes || !fixes->present) return;
    fixesEvent_ = fixes->first_event;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    xcb_xfixes_select_selection_input(connection_, root, selection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(connection_);
    qGuiApp->installNativeEventFilter(this);
  }

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override {
    if (type != "xcb_generic_event_t" || fixesEvent_ == 0) return false;
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY &&
        reinterpret_cast<const xcb_xfixes_selection_notify_event_t*>(event)->selection == selection_) {
      changed_();
    }
    return false;
  }

  bool HasOwner() const {
    if (!connection_) return false;
    xcb_get_selection_owner_reply_t* const reply =
        xcb_get_selection_owner_reply(connection_, xcb_get_selection_owner(connection_, selection_), nullptr);
    const bool owned = reply && reply->owner != XCB_NONE;
    std::free(reply);
    return owned;
  }

 private:
  std::function<void()> changed_;
  xcb_connection_t* connection_;
  xcb_atom_t selection_ = XCB_ATOM_NONE;
  int fixesEvent_ = 0;
};

TrayPresence::TrayPresence() {
  settle_.setSingleShot(true);
  connect(&settle_, &QTimer::timeout, this, [this] { Look(); });
  const auto soon = [this] { settle_.start(kSettleMilliseconds); };
  filter_ = std::make_unique<TrayWindowFilter>(soon);
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (bus.isConnected()) {
    names_ = std::make_unique<QDBusServiceWatcher>(kWatcherAndHosts, bus,
                                                   QDBusServiceWatcher::WatchForOwnerChange);
    connect(names_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, [soon](const QString& name) {
      if (name == kWatcher || name.startsWith(kHost)) soon();
    });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
      bus.connect(kWatcher, QStringLiteral("/StatusNotifierWatcher"), kWatcher, QLatin1String(signal),
                  &settle_, SLOT(start()));
    }
  }
  settle_.setInterval(kSettleMilliseconds);
  statusNotifier_ = HasStatusNotifier();
  xembed_ = filter_->HasOwner();
}

TrayPresence::~TrayPresence() = default;

bool TrayPresence::HasStatusNotifier() const {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected() || !bus.interface()->isServiceRegistered(kWatcher)) return false;
  QDBusInterface watcher(kWatcher, QStringLiteral("/StatusNotifierWatcher"), kWatcher, bus);
  watcher.setTimeout(1000);
  return watcher.property("IsStatusNotifierHostRegistered").toBool() &&
         (!IsKded(*bus.interface()) || HasHostName(*bus.interface()));
}

bool TrayPresence::Has(Kind kind) const {
  return kind == Kind::StatusNotifier ? statusNotifier_ : kind == Kind::XEmbed && xembed_;
}

TrayPresence::Kind TrayPresence::Best() const {
  return statusNotifier_ ? Kind::StatusNotifier : xembed_ ? Kind::XEmbed : Kind::None;
}

void TrayPresence::Look() {
  const bool statusNotifier = HasStatusNotifier();
  const bool xembed = filter_->HasOwner();
  if (statusNotifier == statusNotifier_ && xembed == xembed_) return;
  statusNotifier_ = statusNotifier;
  xembed_ = xembed;
  if (Changed) Changed();
}

}  // namespace quillbox
