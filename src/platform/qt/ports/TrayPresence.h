#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

class QDBusServiceWatcher;

namespace quillbox {

// Which kinds of tray there are now, and a word when that changes.
class TrayPresence : public QObject {
 public:
  enum class Kind { None, StatusNotifier, XEmbed };
  TrayPresence();
  ~TrayPresence() override;

  bool Has(Kind kind) const;
  // The kind that an icon made now would go to.
  Kind Best() const;
  // Called on the event loop when a tray has come or gone.
  std::function<void()> Changed;

 private:
  class TrayWindowFilter;
  void Look();
  bool HasStatusNotifier() const;

  std::unique_ptr<QDBusServiceWatcher> names_;
  std::unique_ptr<TrayWindowFilter> filter_;
  QTimer settle_;
  bool statusNotifier_ = false;
  bool xembed_ = false;
};

}  // namespace quillbox
