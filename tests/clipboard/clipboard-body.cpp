// Our side of a clipboard, driven line by line (sides.py): a request, its argument behind a tab; the answer
// is what is asked for, texts in hexadecimal UTF-8. clipboard-body x11|wayland DISPLAY
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "platform/wayland/clipboard/WaylandClipboard.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "x11/PollEventLoop.h"

namespace quillbox::test {
namespace {

class ClipboardBody {
 public:
  ClipboardBody(const std::string& kind, const char* display) {
    if (kind == "x11")
      clipboard_ = std::make_unique<XClipboard>(loop_, display);
    else
      clipboard_ = std::make_unique<WaylandClipboard>(loop_, display);
    clipboard_->OnLost([this] { ++lost_; });
    listening_ =
        clipboard_->Listen([this](ClipboardNews each) { news_ += each == ClipboardNews::Text ? 'T' : 'O'; });
  }
  std::string Answer(const std::string& verb, const std::string& argument) {
    if (verb == "read") return ToHex(ToUtf8(clipboard_->Read()));
    if (verb == "secret") return std::to_string(clipboard_->HoldsSecret());
    if (verb == "put") return clipboard_->Put(FromUtf8(FromHex(argument))), "";
    if (verb == "restore") {
      if (!clipboard_->Read().empty()) return "a text";
      std::raise(SIGSTOP);  // until somebody else has done something
      return clipboard_->PutUnlessTaken(FromUtf8(FromHex(argument))), "";
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
  // Answers until its input ends; whether nothing is left of the clipboard then.
  bool Serve() {
    std::string waiting;
    bool ended = false;
    loop_.Watch(STDIN_FILENO, [&] {
      static char part[1 << 16];
      const ssize_t got = read(STDIN_FILENO, part, sizeof part);
      ended = got <= 0;
      if (!ended) waiting.append(part, static_cast<std::size_t>(got));
      for (std::size_t end = 0; (end = waiting.find('\n')) != std::string::npos; waiting.erase(0, end + 1))
        Tell(waiting.substr(0, end));
    });
    while (!ended) loop_.RunUntil([&] { return ended; }, 60'000);
    listening_.Release();
    clipboard_.reset();
    return Descriptors() == descriptors_ && loop_.WatchCount() == 1 && loop_.Timers() == 0;
  }

 private:
  void Tell(const std::string& line) {
    const std::size_t tab = line.find('\t');
    try {
      std::cout << Answer(line.substr(0, tab), tab == std::string::npos ? "" : line.substr(tab + 1));
    } catch (const RuntimeError& error) {
      std::cout << "error " << error.Number();
    }
    std::cout << std::endl;
  }
  static std::string ToHex(const std::string& bytes) {
    std::string hex;
    for (const unsigned char byte : bytes)
      (hex += "0123456789abcdef"[byte / 16]) += "0123456789abcdef"[byte % 16];
    return hex;
  }
  static std::string FromHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
      bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    return bytes;
  }

  static std::ptrdiff_t Descriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
  }

  const std::ptrdiff_t descriptors_ = Descriptors();
  PollEventLoop loop_;
  std::unique_ptr<SessionClipboard> clipboard_;
  std::string news_;  // T for a text, O for anything else
  int lost_ = 0;
  Hook listening_;
};

}  // namespace
}  // namespace quillbox::test

int main(int count, char** arguments) {
  if (count != 3) return 2;
  try {
    return quillbox::test::ClipboardBody(arguments[1], arguments[2]).Serve() ? 0 : 1;
  } catch (const quillbox::RuntimeError& error) {
    std::cout << "error " << error.Number() << std::endl;
  }
}
