#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <map>
#include <memory>

#include "platform/ports/EventLoop.h"

namespace quillbox {

// Qt's event loop, as the X11 side sees it.
class QtEventLoop : public EventLoop {
 public:
  void Watch(int fd, std::function<void()> readable) override;
  void Unwatch(int fd) override;
  void WatchWritable(int fd, std::function<void()> writable) override;
  void UnwatchWritable(int fd) override;
  TimerId StartTimer(int milliseconds, std::function<void()> due) override;
  void CancelTimer(TimerId timer) override;
  // Lets the program live on for a time, from within a handler that has to wait.
  static void Pause(int milliseconds);

 private:
  // Deleted by the loop itself: both may end within their own call-back.
  struct LaterDeleter {
    void operator()(QObject* object) const { object->deleteLater(); }
  };
  template <class T>
  using Held = std::unique_ptr<T, LaterDeleter>;

  using Watches = std::map<int, Held<QSocketNotifier>>;

  static void Add(Watches& watches, int fd, QSocketNotifier::Type type, std::function<void()> call);
  static void Remove(Watches& watches, int fd);

  Watches watches_, writableWatches_;
  std::map<TimerId, Held<QTimer>> timers_;
  TimerId lastTimer_ = 0;
};

}  // namespace quillbox
