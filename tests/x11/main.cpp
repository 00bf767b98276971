#include <gtest/gtest.h>

#include "x11/OwnXServer.h"

int main(int count, char** arguments) {
  const quillbox::test::OwnXServer server;
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
