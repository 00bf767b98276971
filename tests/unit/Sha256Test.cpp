#include <gtest/gtest.h>

#include <string>

#include "base/Sha256.h"

namespace quillbox {
namespace {

std::string Hex(const Sha256::Digest& digest) {
  std::string hex;
  for (const unsigned char byte : digest)
    hex += {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15]};
  return hex;
}

// The examples of FIPS 180-2 and of RFC 4231.
TEST(Sha256, OfficialVectors) {
  const std::pair<std::string, std::string> rows[] = {
      {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
       "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
      {std::string(1'000'000, 'a'), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}};
  for (const auto& [bytes, digest] : rows) {
    Sha256 hash;
    hash.Add(std::string_view(bytes).substr(0, 3));
    hash.Add(std::string_view(bytes).substr(std::min<std::size_t>(3, bytes.size())));
    EXPECT_EQ(Hex(hash.Finish()), digest);
  }
  EXPECT_EQ(Hex(HmacSha256(std::string(20, '\x0b'), "Hi There")),
            "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
  EXPECT_EQ(Hex(HmacSha256("Jefe", "what do ya want for nothing?")),
            "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
}

}  // namespace
}  // namespace quillbox
