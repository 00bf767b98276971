#pragma once

#include <cassert>
#include <functional>
#include <utility>

namespace quillbox {

// A handler's stay at an event: when this goes away, the event lets go of the handler. The event must still
// be there then.
class [[nodiscard]] Hook {
 public:
  Hook() = default;
  explicit Hook(std::function<void()> unhook) : unhook_(std::move(unhook)) {}
  Hook(Hook&& other) noexcept : unhook_(std::exchange(other.unhook_, nullptr)) {}
  Hook& operator=(Hook&& other) noexcept {
    if (this == &other) return *this;
    Release();
    unhook_ = std::exchange(other.unhook_, nullptr);
    return *this;
  }
  ~Hook() { Release(); }

  void Release() {
    if (unhook_) std::exchange(unhook_, nullptr)();
  }

 private:
  std::function<void()> unhook_;
};

// An event: at most one handler, given by the object that owns the rule. A second owner would take the first
// one's rule away without a word, so it is refused; nullptr lets go of the handler.
template <class... Arguments>
class Event {
 public:
  using Handler = std::function<void(Arguments...)>;

  Event() = default;
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  void operator=(Handler handler) {
    assert((!handler_ || !handler) && "an event has one owner");
    handler_ = std::move(handler);
  }
  // The handler stays as long as the hook.
  Hook Listen(Handler handler) {
    *this = std::move(handler);
    return Hook([this] { handler_ = nullptr; });
  }

  explicit operator bool() const { return static_cast<bool>(handler_); }
  // Nothing without a handler.
  template <class... Given>
  void operator()(Given&&... given) const {
    if (handler_) handler_(std::forward<Given>(given)...);
  }

 private:
  Handler handler_;
};

template <class... Parameters, class... Arguments>
void Raise(const Event<Parameters...>& event, Arguments&&... arguments) {
  event(std::forward<Arguments>(arguments)...);
}

}  // namespace quillbox
