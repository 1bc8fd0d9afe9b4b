// Narrow text where it is UTF-8.
#include <gtest/gtest.h>

#include "dialog/text_conversion.h"

namespace mixdecks {
namespace {

TEST(Utf8Text, GoesBothWays) {
  for (const char16_t* text :
       {u"\u00E9", u"\u20AC", u"\uFFFD", u"a\xD83D\xDE00z", u"\u07FF\u0800"}) {
    EXPECT_EQ(WideText(NarrowText(text).c_str()), text);
  }
  EXPECT_EQ(NarrowText(u"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(WideText("\xC3\xA9"), u"\u00E9");
}

TEST(Utf8Text, TakesOtherBytesForCharacters) {
  EXPECT_EQ(WideText("caf\xE9"), u"caf\u00E9");
  EXPECT_EQ(WideText("\xC3"), u"\u00C3") << "ends early";
  EXPECT_EQ(WideText("\xC0\x80"), u"\u00C0\u0080") << "overlong";
  EXPECT_EQ(WideText("\xED\xA0\x80"), u"\u00ED\u00A0\u0080") << "half a pair";
  EXPECT_EQ(WideText("\xF8\x80"), u"\u00F8\u0080");
}

TEST(Utf8Text, ReplacesHalvesOfPairs) {
  EXPECT_EQ(NarrowText(u"a\xD83Dz"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(NarrowText(u"\xDE00"), "\xEF\xBF\xBD");
  EXPECT_EQ(NarrowText(u"\xD83D"), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace mixdecks
