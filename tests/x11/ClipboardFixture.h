#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/x11/clipboard/XClipboard.h"
#include "x11/PollEventLoop.h"
#include "x11/TestOwner.h"
#include "x11/TestReader.h"

namespace quillbox::test {

// A clipboard under test on a server whose clipboard is empty at first.
class ClipboardFixture : public testing::Test {
 protected:
  void SetUp() override {
    TestOwner nobody(loop);
    nobody.Clear();
    loop.RunFor(5);
    nobody.Quit();
    Open();
  }

  void Open() {
    listening.Release();
    clipboard = std::make_unique<XClipboard>(loop);
    listening = clipboard->Listen([this](ClipboardNews each) { news.push_back(each); });
    ASSERT_TRUE(clipboard->Settle(1000));
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
  bool AwaitNews(int milliseconds = 3000) {
    return loop.RunUntil([this, count = news.size()] { return news.size() > count; }, milliseconds);
  }

  // The owner takes the clipboard; what is read then.
  std::optional<Text> ReadAfter(TestOwner& owner, int milliseconds = 3000) {
    owner.Own();
    EXPECT_TRUE(AwaitNews(milliseconds));
    return Read();
  }

  PollEventLoop loop;
  std::unique_ptr<XClipboard> clipboard;
  Hook listening;
  std::vector<ClipboardNews> news;
};

}  // namespace quillbox::test
