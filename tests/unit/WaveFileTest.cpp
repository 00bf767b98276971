// Which sound files are handed to the player: everything that is put into the settings' field ends here.
#include <cstdint>
#include <string>

#include "platform/linux/system/WaveFile.h"
#include "unit/FolderTest.h"

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

struct WaveFileTest : FolderTest {
  bool Playable(const std::string& bytes) {
    Put("sound.wav", bytes);
    return IsPlayableWave(In("sound.wav"));
  }
};

TEST_F(WaveFileTest, UsualFormatsArePlayedAndBrokenOnesRefused) {
  // A chunk of odd length is followed by a filling byte.
  const Wave good[] = {{},
                       {.kind = 3, .channels = 1, .rate = 8000, .bits = 32},
                       {.kind = 0xFFFE, .channels = 6, .rate = 192000, .bits = 24},
                       {.before = "LIST" + Little(3, 4) + std::string("abc\0", 4)}};
  for (const Wave& wave : good) EXPECT_TRUE(Playable(wave.Bytes())) << "wave " << &wave - good;
  const Wave bad[] = {{.kind = 85},  // compressed
                      {.channels = 0},
                      {.channels = 200},
                      {.rate = 0},
                      {.bits = 0},
                      {.bits = 13},
                      {.before = "LIST" + Little(0xFFFFFFF0, 4)},
                      {.samples = "", .promised = 0},
                      {.promised = 401},
                      {.promised = 0xFFFFFFFF}};
  for (const Wave& wave : bad) EXPECT_FALSE(Playable(wave.Bytes())) << "wave " << &wave - bad;
  EXPECT_FALSE(Playable(std::string(5000, 'x')));
  const std::string whole = Wave{}.Bytes();
  for (std::size_t length = 0; length < whole.size(); length += length < 50 ? 1 : 50) {
    ASSERT_FALSE(Playable(whole.substr(0, length))) << length;
  }
}

TEST_F(WaveFileTest, OnlyPlainFilesOfModestSizeAreOpened) {
  ASSERT_EQ(::mkfifo(Path("pipe.wav").c_str(), 0600), 0);
  for (const char* name : {"missing.wav", "", "pipe.wav"}) EXPECT_FALSE(IsPlayableWave(In(name))) << name;
  EXPECT_FALSE(IsPlayableWave({}));
  ASSERT_TRUE(Playable(Wave{}.Bytes()));
  std::filesystem::resize_file(Path("sound.wav"), 50'000'001);
  EXPECT_FALSE(IsPlayableWave(In("sound.wav")));
}

}  // namespace
}  // namespace quillbox
