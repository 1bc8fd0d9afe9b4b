// The parts of the dialogs that need no window: address, mask, name, slot text, placement.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "dialog/address_text.h"
#include "dialog/centre_dialog.h"
#include "dialog/character_mask.h"
#include "dialog/slot_list.h"
#include "dialog/still_name.h"
#include "dialog/text_conversion.h"
#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

TEST(AddressText, AcceptsDottedNumbers) {
  for (const char16_t* text : {u"192.168.10.240", u"0.0.0.0", u"255.255.255.254", u"1.2.3.4",
                               u"010.0.0.1", u"0377.1.1.1", u"00.00.00.00", u"0000000001.2.3.4"}) {
    const std::u16string_view view(text);
    EXPECT_EQ(IsAddressText(view), view.size() <= kLongestAddress) << NarrowText(text);
  }
}

TEST(AddressText, RefusesEverythingElse) {
  for (const char16_t* text : {u"",
                               u".",
                               u"...",
                               u"1.2.3",
                               u"1.2.3.4.5",
                               u"1.2.3.a",
                               u"1.2.3.256",
                               u"255.255.255.255",
                               u"1..2.3",
                               u".1.2.3",
                               u"1.2.3.",
                               u"08.1.1.1",
                               u"1.2.3.0400",
                               u"1.2.3.999999999",
                               u" 1.2.3.4",
                               u"1.2.3.4 ",
                               u"0x1.2.3.4",
                               u"-1.2.3.4",
                               u"100.100.100.1000",
                               u"192.168.100.0240"}) {
    EXPECT_FALSE(IsAddressText(text)) << NarrowText(text);
  }
}

TEST(AddressText, LooksAtLowBytesOnly) {
  EXPECT_TRUE(IsAddressText(u"\x0131.2.3.4"));
  EXPECT_FALSE(IsAddressText(u"\x0141.2.3.4"));
}

TEST(AddressText, ReadsEveryNumberInDecimalAndOctal) {
  for (unsigned number = 0; number < 1024; ++number) {
    char octal[16];
    std::snprintf(octal, sizeof octal, "0%o", number);
    for (const std::string& part : {std::to_string(number), std::string(octal)}) {
      const std::optional<std::uint32_t> last = ParseDottedAddress("1.2.3." + part);
      const std::optional<std::uint32_t> first = ParseDottedAddress(part + ".2.3.4");
      ASSERT_EQ(last.has_value(), number <= 255) << part;
      ASSERT_EQ(first.has_value(), number <= 255) << part;
      if (number > 255) continue;
      EXPECT_EQ(*last, 0x01020300U + number);
      EXPECT_EQ(*first, (number << 24) + 0x00020304U);
    }
  }
}

TEST(CharacterMask, AllowsOrForbidsByTheLowByte) {
  CharacterMask mask;
  mask.Set(".0123456789\b", true);
  int passing = 0;
  for (std::uintptr_t character = 0; character < 256; ++character) {
    passing += mask.Passes(character) ? 1 : 0;
  }
  EXPECT_EQ(passing, 12);
  EXPECT_TRUE(mask.Passes('7'));
  EXPECT_TRUE(mask.Passes('\b'));
  EXPECT_TRUE(mask.Passes(0x0131));
  EXPECT_FALSE(mask.Passes('a'));

  mask.Set("ab\xFF", false);
  EXPECT_FALSE(mask.Passes('a'));
  EXPECT_FALSE(mask.Passes(0xFF));
  EXPECT_TRUE(mask.Passes('.'));
  EXPECT_TRUE(mask.Passes('c'));
}

struct PascalString {
  explicit PascalString(const std::string& text) {
    std::memset(bytes, 0xEE, sizeof bytes);
    bytes[0] = static_cast<std::uint8_t>(text.size());
    std::memcpy(bytes + 1, text.data(), text.size());
  }
  std::uint8_t bytes[256];
};

std::string NameOf(const std::string& fileName) {
  PascalString text(fileName);
  return CutStillName(text.bytes);
}

TEST(StillName, IsTheLastComponentUpToItsFirstDot) {
  EXPECT_EQ(NameOf("C:\\a\\b.c.psd"), "b");
  EXPECT_EQ(NameOf("Lower third"), "Lower third");
  EXPECT_EQ(NameOf("picture.psd"), "picture");
  EXPECT_EQ(NameOf("C:\\dir.old\\picture"), "picture");
  EXPECT_EQ(NameOf("C:\\dir\\"), "");
  EXPECT_EQ(NameOf(".psd"), "");
  EXPECT_EQ(NameOf(""), "");
  EXPECT_EQ(NameOf("."), "");
  EXPECT_EQ(NameOf("\\"), "");
}

TEST(StillName, StaysInsideTheRecord) {
  EXPECT_EQ(NameOf(std::string(254, 'x')), std::string(254, 'x'));
  EXPECT_EQ(NameOf(std::string(255, 'x')), std::string(254, 'x'));
  EXPECT_EQ(NameOf(std::string(253, 'x') + "\\y"), "");
  EXPECT_EQ(NameOf(std::string(253, 'x') + "\\"), "");
}

TEST(StillName, EndsInTheHostsRecord) {
  PascalString text("ab.psd");
  CutStillName(text.bytes);
  EXPECT_EQ(text.bytes[3], 0);
  EXPECT_EQ(text.bytes[4], 'p');
}

TEST(SlotText, CountsFromOne) {
  EXPECT_EQ(SlotText(0, false, u"ignored"), u"1. Empty");
  EXPECT_EQ(SlotText(19, true, u"Lower third"), u"20. Lower third");
  EXPECT_EQ(SlotText(4, true, u""), u"5. ");
  EXPECT_EQ(SlotText(4, true, nullptr), u"5. ");
}

TEST(TextConversion, KeepsAsciiAndEmptyText) {
  EXPECT_EQ(WideText(""), u"");
  EXPECT_EQ(WideText("Lower third"), u"Lower third");
  EXPECT_EQ(NarrowText(u"An error occured during export."), "An error occured during export.");
  EXPECT_EQ(NarrowText(u""), "");
  EXPECT_EQ(NarrowText(nullptr), "");
}

DialogPlacement WorkedExample() {
  DialogPlacement placement;
  placement.parentLeft = 200;
  placement.parentTop = 100;
  placement.parentRight = 1200;
  placement.parentBottom = 700;
  placement.width = 400;
  placement.height = 300;
  placement.captionButtonWidth = 18;
  placement.screenWidth = 1920;
  placement.screenHeight = 1080;
  placement.hasSystemMenu = true;
  return placement;
}

TEST(CentreDialog, StandsLeftOfTheMiddleAndAThirdDown) {
  DialogPlacement placement = WorkedExample();
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{200 + 300 - 18, 100 + 100}));
  placement.hasSystemMenu = false;
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{200 + 300 - 12, 100 + 100}));
  placement.captionButtonWidth = 20;  // 20 / 3 - 20 is -14
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{200 + 300 - 13, 100 + 100}));
}

TEST(CentreDialog, StaysInsideTheRightAndBottomEdges) {
  DialogPlacement placement = WorkedExample();
  placement.screenWidth = 850;
  placement.screenHeight = 450;
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{450, 150}));
  placement.screenWidth = 300;
  placement.screenHeight = 200;
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{0, 0}));
}

TEST(CentreDialog, FollowsAParentLeftOfTheScreen) {
  DialogPlacement placement = WorkedExample();
  placement.parentLeft -= 2000;
  placement.parentRight -= 2000;
  placement.parentTop -= 1000;
  placement.parentBottom -= 1000;
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{-1800 + 300 - 18, -900 + 100}));
}

TEST(CentreDialog, PutsALargerDialogAtTheParentsCorner) {
  DialogPlacement placement = WorkedExample();
  placement.width = 1100;
  placement.height = 650;
  EXPECT_EQ(CentredPosition(placement), (ScreenPosition{200 - 18, 100}));
}

TEST(CommandParameter, HoldsControlAndNotification) {
  EXPECT_EQ(CommandParameter(kAddressEdit, kEnChange), 0x030003EFU);
}

}  // namespace
}  // namespace mixdecks
