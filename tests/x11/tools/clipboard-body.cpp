// Our side of the X11 clipboard, driven line by line by clipboard_test.py: a request, its argument behind a
// tab; the answer is what is asked for, texts in hexadecimal UTF-8. With an argument, that is the display.
#include <unistd.h>

#include <iostream>
#include <string>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "x11/PollEventLoop.h"

namespace quillbox::test {
namespace {

class ClipboardBody {
 public:
  explicit ClipboardBody(const char* display) : clipboard_(loop_, display) {
    clipboard_.OnLost([this] { ++lost_; });
  }
  std::string Answer(const std::string& verb, const std::string& argument) {
    if (verb == "read") return ToHex(ToUtf8(clipboard_.Read()));
    if (verb == "secret") return std::to_string(clipboard_.HoldsSecret());
    if (verb == "put") return clipboard_.Put(FromUtf8(FromHex(argument))), "";
    if (verb == "part") return clipboard_.Put(clipboard_.Read().substr(std::stoul(argument), 1)), "";
    if (verb == "clear") return clipboard_.Clear(), "";
    if (verb == "settle") return std::to_string(clipboard_.Settle(std::stoi(argument)));
    if (verb == "hand-over") return std::to_string(clipboard_.HandOver(std::stoi(argument)));
    if (verb == "news") return std::exchange(news_, "");
    if (verb == "place") return std::to_string(reinterpret_cast<std::uintptr_t>(clipboard_.Read().data()));
    if (verb == "timers") return std::to_string(loop_.Timers());
    if (verb == "wake-ups") return std::to_string(loop_.Wakeups());
    if (verb == "lost") return std::to_string(lost_) + ' ' + std::to_string(loop_.WatchCount() - 1);
    return "?";
  }
  void Serve() {
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

  PollEventLoop loop_;
  XClipboard clipboard_;
  std::string news_;  // T for a text, O for anything else
  int lost_ = 0;
  Hook listening_ =
      clipboard_.Listen([this](ClipboardNews each) { news_ += each == ClipboardNews::Text ? 'T' : 'O'; });
};

}  // namespace
}  // namespace quillbox::test

int main(int count, char** arguments) {
  try {
    quillbox::test::ClipboardBody(count > 1 ? arguments[1] : nullptr).Serve();
  } catch (const quillbox::RuntimeError& error) {
    std::cout << "error " << error.Number() << std::endl;
  }
  return 0;
}
