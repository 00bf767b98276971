#pragma once

#include <gtest/gtest.h>

#include "x11/KeyReceiver.h"
#include "x11/TestKeyboard.h"

namespace quillbox::test {

// A person at an American keyboard, a window that has the focus, and the sender that types into it.
class KeySenderFixture : public testing::Test {
 protected:
  KeySenderFixture() { receiver.TakeFocus(); }

  TestKeyboard person{"us"};
  KeyReceiver receiver{{.answersPings = true}};
  XKeySender sender{Plain()};
};

}  // namespace quillbox::test
