// What is kept from one run to the next, and what is made of values that anybody wrote.
#include "dialog/preferences.h"

#include <gtest/gtest.h>

#include <cstring>

#include "dialog/text_conversion.h"

namespace mixdecks {
namespace {

std::vector<std::byte> BytesOf(const void* data, std::size_t size) {
  const auto* bytes = static_cast<const std::byte*>(data);
  return {bytes, bytes + size};
}

class Preferences : public ::testing::Test {
 protected:
  void StoreAddress(std::u16string_view text) {
    store.values[kAddressPreference] = {PreferenceType::kText,
                                        BytesOf(text.data(), text.size() * 2)};
  }
  std::u16string LoadedAddress() {
    LoadPreferences(store, state);
    return std::u16string(state.switcherAddress.View());
  }

  MemoryPreferences store;
  ExportDialogState state;
};

TEST_F(Preferences, DefaultWithoutAKeyAndMakeIt) {
  state.stillIndex = 7;
  EXPECT_EQ(LoadedAddress(), kDefaultAddress);
  EXPECT_EQ(state.stillIndex, 0);
  EXPECT_TRUE(store.exists);
}

TEST_F(Preferences, DefaultWhenTheKeyCannotBeOpened) {
  StoreAddress(u"10.0.0.1");
  store.canOpen = false;
  EXPECT_EQ(LoadedAddress(), kDefaultAddress);
  SavePreferences(store, state);
  EXPECT_EQ(store.values.size(), 1U);
}

TEST_F(Preferences, ComeBackAsTheyWereSaved) {
  state.switcherAddress = Text(u"10.0.0.1");
  state.stillIndex = -1;
  SavePreferences(store, state);
  const MemoryPreferences::Value& address = store.values.at(kAddressPreference);
  EXPECT_EQ(address.type, PreferenceType::kText);
  EXPECT_EQ(address.bytes.size(), 16U) << "no terminator";
  EXPECT_EQ(store.values.at(kStillIndexPreference).type, PreferenceType::kNumber);
  EXPECT_EQ(LoadedAddress(), u"10.0.0.1") << "shorter than the default";
  EXPECT_EQ(state.stillIndex, -1);
}

TEST_F(Preferences, LeaveTheAddressAloneWithoutOne) {
  StoreAddress(u"10.0.0.1");
  state.stillIndex = 3;
  SavePreferences(store, state);
  EXPECT_EQ(LoadedAddress(), u"10.0.0.1");
  EXPECT_EQ(state.stillIndex, 3);
}

TEST_F(Preferences, TakeThirtyTwoUnitsAndNoMore) {
  StoreAddress(std::u16string(32, u'7'));
  EXPECT_EQ(LoadedAddress(), std::u16string(32, u'7'));
  StoreAddress(std::u16string(33, u'7'));
  EXPECT_EQ(LoadedAddress(), kDefaultAddress);
}

TEST_F(Preferences, EndTheAddressAtAZeroUnit) {
  StoreAddress(std::u16string_view(u"10.0.0.1\0garbage", 16));
  EXPECT_EQ(LoadedAddress(), u"10.0.0.1");
  StoreAddress(std::u16string_view(u"\0", 1));
  EXPECT_EQ(LoadedAddress(), u"");
}

TEST_F(Preferences, TakeAValueOfNoBytesForNone) {
  StoreAddress(u"");
  store.values[kStillIndexPreference] = {PreferenceType::kText, {}};
  EXPECT_EQ(LoadedAddress(), kDefaultAddress);
  EXPECT_EQ(state.stillIndex, 0);
}

TEST_F(Preferences, SurviveValuesOfTheWrongKind) {
  struct {
    std::string bytes;
    std::u16string address;
    std::int32_t index;
  } const cases[] = {
      {"", kDefaultAddress, 0},
      {"1", u"", 0x31},
      {{"1\0", 2}, u"1", 0x31},
      {"abc", u"\x6261", 0x636261},
      {{"\x01\x02\x03\x04", 4}, u"\x0201\x0403", 0x04030201},
      {"\xFF\xFF\xFF\xFF", u"\xFFFF\xFFFF", -1},
      {"abcde", u"\x6261\x6463", 0},  // too long for a number
      {{"1\0.\0\0\0"
        "2\0\0\0",
        10},
       u"1.",
       0},
      {std::string(63, 'a'), std::u16string(31, u'\x6161'), 0},
      {std::string(64, 'a'), std::u16string(32, u'\x6161'), 0},
      {std::string(65, 'a'), kDefaultAddress, 0},
      {std::string(4000, 'a'), kDefaultAddress, 0},
  };
  for (const PreferenceType type : {PreferenceType::kText, PreferenceType::kNumber}) {
    for (const auto& each : cases) {
      const MemoryPreferences::Value value{type, BytesOf(each.bytes.data(), each.bytes.size())};
      store.values[kAddressPreference] = value;
      store.values[kStillIndexPreference] = value;
      EXPECT_EQ(LoadedAddress(), each.address) << &each - cases;
      EXPECT_EQ(state.stillIndex, each.index) << &each - cases;
    }
  }
}

TEST_F(Preferences, ReplaceTheAddressThatWasThere) {
  state.switcherAddress = Text(u"1.1.1.1");
  StoreAddress(u"2.2.2.2");
  EXPECT_EQ(LoadedAddress(), u"2.2.2.2");
}

}  // namespace
}  // namespace mixdecks
