// UTF-8 and UTF-16, four-character codes, checksums.
#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "simulator/checksum.h"
#include "simulator/code_text.h"
#include "simulator/unicode.h"

namespace mixdecks::simulator {
namespace {

TEST(Unicode, CarriesEveryLengthOfCharacterBothWays) {
  const std::u16string utf16 = u"a\u00E9\u20AC\U0001F3A5z";
  const std::string utf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xA5z";
  EXPECT_EQ(ToUtf8(utf16), utf8);
  EXPECT_EQ(ToUtf16(utf8), utf16);
}

TEST(Unicode, CarriesZeroUnits) {
  const std::u16string text(u"a\0b", 3);
  EXPECT_EQ(ToUtf16(ToUtf8(text)), text);
}

TEST(Unicode, ReplacesSurrogatesWithoutPartner) {
  EXPECT_EQ(ToUtf8(std::u16string{u'a', char16_t{0xD800}, u'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(ToUtf8(std::u16string{char16_t{0xDC00}, char16_t{0xD800}}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Unicode, ReplacesWhatIsNoUtf8) {
  EXPECT_EQ(ToUtf16("\xFFx"), u"\uFFFDx");
  EXPECT_EQ(ToUtf16("\xC0\x80"), u"\uFFFD\uFFFD") << "an overlong zero";
  EXPECT_EQ(ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD") << "an encoded surrogate";
  EXPECT_EQ(ToUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond U+10FFFF";
  EXPECT_EQ(ToUtf16("\xE2\x82"), u"\uFFFD\uFFFD") << "cut off";
}

TEST(Unicode, CarriesEveryCharacterThatThereIs) {
  std::u16string all;
  for (char32_t character = 0; character <= 0x10FFFF; character += character < 0x3000 ? 1 : 37) {
    if (character >= 0xD800 && character <= 0xDFFF) continue;
    if (character >= 0x10000) {
      all += static_cast<char16_t>(0xD7C0 + (character >> 10));
      all += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
    } else {
      all += static_cast<char16_t>(character);
    }
  }
  EXPECT_EQ(ToUtf16(ToUtf8(all)), all);
}

TEST(CodeText, ShowsCharactersOrHexadecimal) {
  EXPECT_EQ(CodeText(0x31306939), "10i9");
  EXPECT_EQ(CodeText(0x80004005), "0x80004005");
  EXPECT_EQ(CodeText(1), "0x00000001");
}

TEST(CodeText, ReadsFourCharactersOnly) {
  EXPECT_EQ(CodeFromText("10i9"), 0x31306939u);
  EXPECT_EQ(CodeFromText("10i"), std::nullopt);
  EXPECT_EQ(CodeFromText("10i99"), std::nullopt);
  EXPECT_EQ(CodeFromText("10\xC3\xA9"), std::nullopt);
}

TEST(CodeText, KnowsTheVideoModes) {
  EXPECT_EQ(VideoModeFromText("ntsc"), 0x6E747363u);
  EXPECT_EQ(VideoModeFromText("NTSC"), std::nullopt);
  EXPECT_EQ(VideoModeList().substr(0, 12), "ntsc, pall, ");
}

TEST(Checksum, IsTheOneOfZipAndPng) {
  const std::string digits = "123456789";
  const std::vector<std::uint8_t> bytes(digits.begin(), digits.end());
  EXPECT_EQ(Checksum(bytes), 0xCBF43926u);
  EXPECT_EQ(Checksum({}), 0u);
}

TEST(Checksum, GoesOnFromAnyPlace) {
  std::vector<std::uint8_t> bytes(1000);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{7});
  const std::span<const std::uint8_t> all = bytes;
  for (std::size_t cut = 0; cut <= 20; ++cut) {
    EXPECT_EQ(Checksum(all.subspan(cut), Checksum(all.first(cut))), Checksum(all)) << cut;
  }
}

}  // namespace
}  // namespace mixdecks::simulator
