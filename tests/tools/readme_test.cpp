// The lines of code in the README, compiled and run as they stand there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "docs/examples/convert_frame.cpp"
#include "tests/simulator/temporary_folder.h"

namespace mixdecks {
namespace {

TEST(ReadmeTest, ShowsTheExampleThatIsCompiled) {
  const std::string readme = test::ReadText(MIXDECKS_SOURCE_DIR "/README.md");
  const std::string code = test::ReadText(MIXDECKS_SOURCE_DIR "/docs/examples/convert_frame.cpp");
  ASSERT_FALSE(code.empty());
  EXPECT_NE(readme.find("```cpp\n" + code + "```"), std::string::npos);
}

TEST(ReadmeTest, ConvertsAFrame) {
  const std::vector<std::uint8_t> white(std::size_t{1920} * 1080 * 4, 255);
  const std::vector<std::uint8_t> frame = ToSwitcherFrame(white);
  ASSERT_EQ(frame.size(), white.size());
  const std::vector<std::uint8_t> lastPixel(frame.end() - 4, frame.end());
  EXPECT_THAT(lastPixel, testing::ElementsAre(0x3A, 0xC7, 0xFF, 0xAB));
}

}  // namespace
}  // namespace mixdecks
