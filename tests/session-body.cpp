// Our sides of a session, driven line by line: a request, its argument behind a tab; the answer is what is
// asked for, texts escaped as in Protocol.h. session-body x11|wayland|keys DISPLAY: a clipboard, or the keys
// of X11
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

#include "base/RuntimeError.h"
#include "console/Protocol.h"
#include "platform/wayland/clipboard/WaylandClipboard.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "platform/x11/keys/XGlobalKey.h"
#include "platform/x11/keys/XKeySender.h"
#include "x11/PollEventLoop.h"

namespace quillbox::test {
namespace {

std::ptrdiff_t Descriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return std::distance(begin(all), end(all));
}

class Side {
 public:
  virtual ~Side() = default;
  virtual std::string Answer(const std::string& verb, const std::string& argument) = 0;
};

class ClipboardSide final : public Side {
 public:
  ClipboardSide(PollEventLoop& loop, std::unique_ptr<SessionClipboard> clipboard)
      : loop_(loop), clipboard_(std::move(clipboard)) {
    clipboard_->OnLost([this] { ++lost_; });
    listening_ =
        clipboard_->Listen([this](ClipboardNews each) { news_ += each == ClipboardNews::Text ? 'T' : 'O'; });
  }
  std::string Answer(const std::string& verb, const std::string& argument) override {
    if (verb == "read") return Escape(clipboard_->Read());
    if (verb == "secret") return std::to_string(clipboard_->HoldsSecret());
    if (verb == "put") return clipboard_->Put(Unescape(argument)), "";
    if (verb == "restore") {
      if (!clipboard_->Read().empty()) return "a text";
      std::raise(SIGSTOP);  // until somebody else has done something
      return clipboard_->PutUnlessTaken(Unescape(argument)), "";
    }
    if (verb == "part") return clipboard_->Put(clipboard_->Read().substr(std::stoul(argument), 1)), "";
    if (verb == "clear") return clipboard_->Clear(), "";
    if (verb == "settle") return std::to_string(clipboard_->Settle(std::stoi(argument)));
    if (verb == "hand-over") return std::to_string(clipboard_->HandOver(std::stoi(argument)));
    if (verb == "news") return std::exchange(news_, "");
    if (verb == "place") return std::to_string(reinterpret_cast<std::uintptr_t>(clipboard_->Read().data()));
    if (verb == "timers") return std::to_string(loop_.Timers());
    if (verb == "wake-ups") return std::to_string(loop_.Wakeups());
    if (verb == "descriptors") return std::to_string(Descriptors());
    if (verb == "lost") return std::to_string(lost_) + ' ' + std::to_string(loop_.WatchCount() - 1);
    return "?";
  }

 private:
  PollEventLoop& loop_;
  std::unique_ptr<SessionClipboard> clipboard_;
  std::string news_;  // T for a text, O for anything else
  int lost_ = 0;
  Hook listening_;
};

class KeysSide final : public Side {
 public:
  KeysSide(PollEventLoop& loop, const char* display)
      : loop_(loop),
        sender_({.display = display, .pause = [this](int wait) { Pause(wait); }, .isOurs = {}}),
        key_(loop, display) {}
  std::string Answer(const std::string& verb, const std::string& argument) override {
    if (verb == "send") return sender_.Send(Unescape(argument)), "";
    if (verb == "send-to") {  // the class of the window is the answer
      std::string told;
      sender_.SendTo([&](const std::string& windowClass) {
        told = windowClass;
        return Unescape(argument);
      });
      return told;
    }
    if (verb == "fail") return pausesUntilFailure_ = std::stoi(argument), "";
    if (verb == "recover") return sender_.Recover(), "";
    if (verb == "bind")
      return std::to_string(static_cast<int>(key_.Bind(*ParseCombination(Unescape(argument)))));
    if (verb == "release") return key_.Release(), "";
    if (verb == "heard") return std::exchange(heard_, "");
    return "?";
  }

 private:
  // The program's own events, further requests among them.
  void Pause(int milliseconds) {
    loop_.RunFor(milliseconds);
    if (--pausesUntilFailure_ == 0) throw std::runtime_error("failed");
  }

  PollEventLoop& loop_;
  XKeySender sender_;
  XGlobalKey key_;
  int pausesUntilFailure_ = 0;
  std::string heard_;  // P for a press, or what has become of the key
  Hook pressed_ = key_.OnPressed([this] { heard_ += 'P'; });
  Hook changed_ =
      key_.OnChanged([this](KeyBinding binding) { heard_ += std::to_string(static_cast<int>(binding)); });
};

std::unique_ptr<Side> Make(const std::string& kind, PollEventLoop& loop, const char* display) {
  if (kind == "x11")
    return std::make_unique<ClipboardSide>(loop, std::make_unique<XClipboard>(loop, display));
  if (kind == "wayland")
    return std::make_unique<ClipboardSide>(loop, std::make_unique<WaylandClipboard>(loop, display));
  return std::make_unique<KeysSide>(loop, display);
}

void Tell(Side& side, const std::string& line) {
  const std::size_t tab = line.find('\t');
  std::string answer;
  try {
    answer = side.Answer(line.substr(0, tab), tab == std::string::npos ? "" : line.substr(tab + 1));
  } catch (const RuntimeError& error) {
    answer = "error " + std::to_string(error.Number());
  } catch (const std::exception& error) {
    answer = error.what();
  }
  std::cout << answer << std::endl;
}

// Answers until the input ends; a request may come in while the one before is carried out.
void Serve(PollEventLoop& loop, Side& side) {
  std::string waiting;
  bool ended = false;
  const std::function<void()> answerNext = [&] {
    const std::size_t end = waiting.find('\n');
    if (end == std::string::npos) return;
    const std::string line = waiting.substr(0, end);
    waiting.erase(0, end + 1);
    if (waiting.find('\n') != std::string::npos) loop.StartTimer(0, answerNext);
    Tell(side, line);
  };
  loop.Watch(STDIN_FILENO, [&] {
    static char part[1 << 16];
    const ssize_t got = read(STDIN_FILENO, part, sizeof part);
    ended = got <= 0;
    if (!ended) waiting.append(part, static_cast<std::size_t>(got));
    answerNext();
  });
  while (!ended) loop.Turn();
  loop.Unwatch(STDIN_FILENO);
}

}  // namespace
}  // namespace quillbox::test

// Succeeds if nothing is left of the side at the end.
int main(int count, char** arguments) {
  using namespace quillbox::test;
  if (count != 3) return 2;
  std::signal(SIGPIPE, [](int) {});  // as EndingSignals has it
  const std::ptrdiff_t before = Descriptors();
  PollEventLoop loop;
  try {
    Serve(loop, *Make(arguments[1], loop, arguments[2]));
  } catch (const quillbox::RuntimeError& error) {
    std::cout << "error " << error.Number() << std::endl;
  }
  return Descriptors() == before && loop.WatchCount() == 0 && loop.Timers() == 0 ? 0 : 1;
}
