#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "platform/Utf8.h"
#include "platform/linux/XKeySender.h"
#include "x11/KeyReceiver.h"
#include "x11/KeySenderParts.h"
#include "x11/TestKeyboard.h"

namespace quillbox::test {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

// From the start of `type` until the last of the keys has arrived.
double Measure(KeyReceiver& receiver, std::size_t keys, const std::function<void()>& type) {
  receiver.Clear();
  const auto start = std::chrono::steady_clock::now();
  type();
  while (receiver.Presses().size() < keys &&
         std::chrono::steady_clock::now() - start < std::chrono::seconds(60)) {
    Sleep(1);
  }
  return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

// Says how fast the sender is beside xdotool; what must hold on any machine is that nothing is lost.
TEST(XKeySenderSpeed, ThousandCharactersBesideXdotool) {
  const TestKeyboard person("us");
  std::string plain;
  while (plain.size() < 1000) plain += "The quick brown fox jumps over the lazy dog, 1234567890. ";
  plain.resize(1000);
  XKeySender sender(Plain());
  for (const bool answersPings : {true, false}) {
    KeyReceiver receiver({.answersPings = answersPings});
    receiver.TakeFocus();
    const double ours = Measure(receiver, 1000, [&] { sender.Send(FromUtf8(plain)); });
    ASSERT_EQ(receiver.Text(), plain);
    std::printf("quillbox: 1000 characters in %.1f ms\n", ours);
    if (std::system("command -v xdotool >/dev/null") != 0) continue;
    for (const char* delay : {"", "--delay 0 "}) {
      if (*delay == 0 && !answersPings) continue;  // it takes seconds, once is enough
      const std::string command = std::string("xdotool type ") + delay + "'" + plain + "'";
      const double theirs = Measure(receiver, 1000, [&] { EXPECT_EQ(std::system(command.c_str()), 0); });
      std::printf("xdotool type %s: %.1f ms, %.1f times as long\n", delay, theirs, theirs / ours);
    }
  }
}

}  // namespace
}  // namespace quillbox::test
