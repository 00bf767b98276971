// Which sound files are handed to the player: everything that is put into the settings' field ends here.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "base/Utf8.h"
#include "memory/ScratchFolder.h"
#include "platform/linux/system/WaveFile.h"
#include "unit/FileContent.h"

namespace quillbox {
namespace {

std::string Little(std::uint32_t number, int bytes) {
  std::string text;
  for (; bytes-- > 0; number >>= 8) text += static_cast<char>(number & 0xFF);
  return text;
}

struct Wave {
  std::uint32_t kind = 1;
  std::uint32_t channels = 2;
  std::uint32_t rate = 44100;
  std::uint32_t bits = 16;
  std::string before = {};  // chunks between the format and the samples
  std::string samples = std::string(400, '\1');
  std::uint32_t promised = 400;  // bytes of samples, as the header says

  std::string Bytes() const {
    const std::string format = Little(kind, 2) + Little(channels, 2) + Little(rate, 4) +
                               Little(rate * channels * bits / 8, 4) + Little(channels * bits / 8, 2) +
                               Little(bits, 2);
    const std::string chunks =
        "WAVEfmt " + Little(16, 4) + format + before + "data" + Little(promised, 4) + samples;
    return "RIFF" + Little(static_cast<std::uint32_t>(chunks.size()), 4) + chunks;
  }
};

class WaveFileTest : public testing::Test {
 protected:
  bool Playable(const std::string& bytes) {
    PutContent(folder_.Path("sound.wav"), bytes);
    return At("sound.wav");
  }
  bool At(const std::string& name) { return IsPlayableWave(FromUtf8(folder_.Path(name))); }

  ScratchFolder folder_;
};

TEST_F(WaveFileTest, UsualFormatsArePlayed) {
  EXPECT_TRUE(Playable(Wave{}.Bytes()));
  EXPECT_TRUE(Playable(Wave{.kind = 3, .channels = 1, .rate = 8000, .bits = 32}.Bytes()));
  EXPECT_TRUE(Playable(Wave{.kind = 0xFFFE, .channels = 6, .rate = 192000, .bits = 24}.Bytes()));
  // A chunk of odd length is followed by a filling byte.
  EXPECT_TRUE(Playable(Wave{.before = "LIST" + Little(3, 4) + std::string("abc\0", 4)}.Bytes()));
}

TEST_F(WaveFileTest, BrokenHeadersAndLengthsThatTheFileDoesNotHoldAreRefused) {
  for (const std::string& bytes : {std::string(), std::string("RIFF"), std::string(5000, 'x')}) {
    EXPECT_FALSE(Playable(bytes)) << bytes.substr(0, 4);
  }
  const Wave waves[] = {
      {.kind = 85},  // compressed
      {.channels = 0},
      {.channels = 200},
      {.rate = 0},
      {.bits = 0},
      {.bits = 13},
      {.before = "LIST" + Little(0xFFFFFFF0, 4)},
      {.samples = "", .promised = 0},
      {.promised = 401},
      {.promised = 0xFFFFFFFF},
  };
  for (const Wave& wave : waves) EXPECT_FALSE(Playable(wave.Bytes())) << "wave " << &wave - waves;
  const std::string whole = Wave{}.Bytes();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    ASSERT_FALSE(Playable(whole.substr(0, length))) << length;
  }
}

TEST_F(WaveFileTest, OnlyPlainFilesOfModestSizeAreOpened) {
  EXPECT_FALSE(At("missing.wav"));
  EXPECT_FALSE(IsPlayableWave({}));
  EXPECT_FALSE(IsPlayableWave(FromUtf8(folder_.Path()))) << "a folder";
  ASSERT_EQ(mkfifo(folder_.Path("pipe.wav").c_str(), 0600), 0);
  EXPECT_FALSE(At("pipe.wav"));

  ASSERT_TRUE(Playable(Wave{}.Bytes()));
  std::filesystem::resize_file(folder_.Path("sound.wav"), 50'000'001);
  EXPECT_FALSE(At("sound.wav"));
}

}  // namespace
}  // namespace quillbox
