#include "platform/qt/ports/QtEventLoop.h"

#include <QEventLoop>

namespace quillbox {

void QtEventLoop::Watch(int fd, std::function<void()> readable) {
  Add(watches_, fd, QSocketNotifier::Read, std::move(readable));
}

void QtEventLoop::Unwatch(int fd) { Remove(watches_, fd); }

void QtEventLoop::WatchWritable(int fd, std::function<void()> writable) {
  Add(writableWatches_, fd, QSocketNotifier::Write, std::move(writable));
}

void QtEventLoop::UnwatchWritable(int fd) { Remove(writableWatches_, fd); }

void QtEventLoop::Add(Watches& watches, int fd, QSocketNotifier::Type type, std::function<void()> call) {
  Held<QSocketNotifier> notifier(new QSocketNotifier(fd, type));
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                   [call = std::move(call)] { call(); });
  watches[fd] = std::move(notifier);
}

void QtEventLoop::Remove(Watches& watches, int fd) {
  const auto found = watches.find(fd);
  if (found == watches.end()) return;
  found->second->setEnabled(false);
  watches.erase(found);
}

EventLoop::TimerId QtEventLoop::StartTimer(int milliseconds, std::function<void()> due) {
  const TimerId id = ++lastTimer_;
  Held<QTimer> timer(new QTimer);
  timer->setSingleShot(true);
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this, id, call = std::move(due)] {
    // Gone before the call, which may start another.
    const Held<QTimer> ended = std::move(timers_[id]);
    timers_.erase(id);
    call();
  });
  timer->start(milliseconds);
  timers_.emplace(id, std::move(timer));
  return id;
}

void QtEventLoop::CancelTimer(TimerId timer) {
  const auto found = timers_.find(timer);
  if (found == timers_.end()) return;
  found->second->stop();
  timers_.erase(found);
}

void QtEventLoop::Pause(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace quillbox
