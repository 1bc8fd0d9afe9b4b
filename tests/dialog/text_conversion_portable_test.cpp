// Narrow text where it is UTF-8.
#include "dialog/text_conversion.h"
#include "tests/dialog/dialog_fixture.h"

namespace mixdecks {
namespace {

using testing::Dialog;

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

/// The document's name is cut by bytes, wherever a character ends.
TEST_F(Dialog, ProposesANameOfAnyCharacters) {
  const std::pair<std::string, std::u16string> cases[] = {
      {"tr\xC3\xA4umend.psd", u"tr\u00E4umend"},
      {"\xF0\x9F\x98\x80.psd", u"\xD83D\xDE00"},
      {std::string(252, 'x') + "\xC3\xA4", std::u16string(252, u'x') + u"\u00E4"},
      {std::string(253, 'x') + "\xC3\xA4", std::u16string(253, u'x') + u"\u00C3"},
  };
  for (const auto& [fileName, stillName] : cases) {
    rig.SetFileName(fileName);
    rig.Open();
    EXPECT_EQ(rig.dialog->Control(kNameEdit).text, stillName) << fileName;
    rig.Close();
  }
}

}  // namespace
}  // namespace mixdecks
