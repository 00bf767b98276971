#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/wayland/clipboard/WaylandClipboard.h"
#include "wayland/TestCompositor.h"
#include "x11/PollEventLoop.h"

namespace quillbox::test {

constexpr int kPatience = 20000;  // milliseconds; what is waited for comes at once on an idle machine
constexpr int kLookMs = 10;
constexpr char kBest[] = "text/plain;charset=utf-8";
constexpr char kHint[] = "x-kde-passwordManagerHint";

inline std::string Times(std::size_t count, std::string_view what) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += what;
  return all;
}

inline std::size_t OpenDescriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// Clipboards under test on compositors of the tests' own. At the end nothing is left of all of them.
class WaylandClipboardTest : public testing::Test {
 protected:
  void TearDown() override {
    Close();
    compositor.reset();
    EXPECT_TRUE(Await([this] { return OpenDescriptors() <= descriptors; }))
        << OpenDescriptors() << " descriptors, before " << descriptors;
    EXPECT_EQ(loop.WatchCount(), 0u);
    EXPECT_EQ(loop.Timers(), 0u);
  }

  void Start(TestCompositor::Options options = {}) {
    Close();
    compositor = std::make_unique<TestCompositor>(std::move(options));
    Open();
  }
  void Open() {
    clipboard = std::make_unique<WaylandClipboard>(loop, compositor->Socket().c_str());
    hook = clipboard->Listen([this](ClipboardNews each) { news.push_back(each); });
    ASSERT_TRUE(clipboard->Settle(kPatience));
    news.clear();
  }
  void Close() {
    hook.Release();
    clipboard.reset();
  }

  // The clipboard's text; nothing if it can't be opened.
  std::optional<Text> Read() {
    try {
      return Text(clipboard->Read());
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), errors::kClipboardBusy);
      return std::nullopt;
    }
  }
  // The owner takes the clipboard; what is read once there is news of it.
  std::optional<Text> ReadAfter(TestCompositor::Offer offer) {
    const std::size_t before = news.size();
    compositor->Own(std::move(offer));
    EXPECT_TRUE(Await([&] { return news.size() > before; }));
    return Read();
  }

  // What happens in the compositor's thread wakes nobody: it is looked for again and again.
  bool Await(const std::function<bool()>& condition) {
    for (int i = 0; i < kPatience / kLookMs; ++i)
      if (loop.RunUntil(condition, kLookMs)) return true;
    return false;
  }
  bool AwaitOffered() {
    return Await([&] { return !compositor->Offered().empty(); });
  }

  // What a reader gets of our text in this type; nothing if it isn't offered.
  std::optional<std::string> Paste(const std::string& type = kBest) {
    const int fd = compositor->Paste(type);
    if (fd < 0) return std::nullopt;
    std::string all;
    EXPECT_TRUE(Await([&] { return TakeAll(fd, all); }));
    close(fd);
    return all;
  }
  // Takes what is there; true at the end of it.
  static bool TakeAll(int fd, std::string& all) {
    char piece[65536];
    ssize_t got = 0;
    while ((got = read(fd, piece, sizeof piece)) > 0) all.append(piece, static_cast<std::size_t>(got));
    return got == 0;
  }

  PollEventLoop loop;
  const std::size_t descriptors = OpenDescriptors();
  std::unique_ptr<TestCompositor> compositor;
  std::unique_ptr<WaylandClipboard> clipboard;
  Hook hook;
  std::vector<ClipboardNews> news;
};

}  // namespace quillbox::test
