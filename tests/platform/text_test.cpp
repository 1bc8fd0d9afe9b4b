#include "platform/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace mixdecks {
namespace {

using namespace std::string_view_literals;

TEST(Text, HasTheLayoutOfABstr) {
  char16_t* text = AllocateText(u"slot", 4);
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const std::byte*>(text) - 4, 4);
  EXPECT_EQ(bytes, 8U);
  EXPECT_EQ(std::u16string_view(text, 4), u"slot");
  EXPECT_EQ(text[4], u'\0');
  EXPECT_EQ(TextLength(text), 4U);
  FreeText(text);
}

TEST(Text, KeepsZeroUnits) {
  const Text text(u"a\0b"sv);
  EXPECT_EQ(text.View(), u"a\0b"sv);
}

TEST(Text, TellsAnEmptyStringFromNone) {
  const Text empty(u""sv);
  EXPECT_TRUE(empty);
  EXPECT_EQ(TextLength(empty.Get()), 0U);
  EXPECT_EQ(empty.Get()[0], u'\0');

  const Text fromNoCharacters{std::u16string_view()};
  EXPECT_TRUE(fromNoCharacters);

  const Text none = Text::CopyOf(nullptr);
  EXPECT_FALSE(none);
  EXPECT_EQ(none.View(), u""sv);
  EXPECT_EQ(TextLength(nullptr), 0U);
  FreeText(nullptr);
}

TEST(Text, CopiesUpToTheZero) {
  const Text text = Text::CopyOf(u"name");
  EXPECT_EQ(text.View(), u"name");
}

TEST(Text, HoldsLongStrings) {
  const std::u16string characters(300'000, u'\u3042');
  EXPECT_EQ(Text(characters).View(), characters);
}

TEST(Text, ThrowsWhenTheLengthFitsNoString) {
  const char16_t one = u'x';
  EXPECT_THROW(static_cast<void>(AllocateText(&one, std::size_t{1} << 32)), std::bad_alloc);
  EXPECT_THROW(static_cast<void>(AllocateText(&one, std::numeric_limits<std::size_t>::max())),
               std::bad_alloc);
}

TEST(Text, MovesItsOneString) {
  Text first(u"one"sv);
  const char16_t* characters = first.Get();
  Text second(u"two"sv);
  second = std::move(first);
  EXPECT_EQ(second.Get(), characters);
  EXPECT_FALSE(first);
  const Text third(std::move(second));
  EXPECT_EQ(third.Get(), characters);
}

TEST(Text, ReceivesAString) {
  Text text(u"old"sv);
  *text.Receive() = AllocateText(u"new", 3);
  EXPECT_EQ(text.View(), u"new");
}

TEST(Text, AdoptsAndDetaches) {
  Text text = Text::Adopt(AllocateText(u"x", 1));
  char16_t* detached = text.Detach();
  EXPECT_FALSE(text);
  FreeText(detached);
}

TEST(Text, AnotherThreadMayFree) {
  std::thread([text = Text(u"far"sv)] { EXPECT_EQ(text.View(), u"far"); }).join();
}

}  // namespace
}  // namespace mixdecks
