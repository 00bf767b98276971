#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "x11/PollEventLoop.h"
#include "x11/TestOwner.h"
#include "x11/TestReader.h"

namespace quillbox::test {

// A clipboard under test on a server whose clipboard is empty at first.
class ClipboardFixture : public testing::Test {
 protected:
  void SetUp() override {
    TestClient(loop).SetOwner("CLIPBOARD", XCB_NONE);
    clipboard = std::make_unique<XClipboard>(loop);
    listening = clipboard->Listen([this](ClipboardNews each) { news.push_back(each); });
    ASSERT_TRUE(clipboard->Settle(20'000));
    news.clear();
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
  // Runs until there has been another piece of news.
  bool AwaitNews() {
    return loop.RunUntil([this, count = news.size()] { return news.size() > count; });
  }
  // The owner takes the clipboard; what is read then.
  std::optional<Text> ReadAfter(TestOwner& owner) {
    owner.Own();
    EXPECT_TRUE(AwaitNews());
    return Read();
  }
  // What a program pastes; nothing if it is refused.
  std::optional<std::string> Paste() {
    TestReader reader(loop);
    const auto& taken = reader.Fetch("UTF8_STRING");
    return taken.refused ? std::nullopt : std::optional(taken.bytes);
  }

  PollEventLoop loop;
  std::unique_ptr<XClipboard> clipboard;
  std::vector<ClipboardNews> news;
  Hook listening;
};

}  // namespace quillbox::test
