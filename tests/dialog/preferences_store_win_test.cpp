// The registry as the place of preferences, on a key of the test's own.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

#include "dialog/preferences_store.h"

namespace mixdecks {
namespace {

constexpr wchar_t kTestKey[] = L"Software\\Mixdecks Preferences Test";
constexpr wchar_t kPreferences[] =
    L"Software\\Tollenmark Design\\Mixdecks Photoshop Exporter\\Preferences";

class Registry : public ::testing::Test {
 protected:
  struct Stored {
    DWORD type = REG_NONE;
    std::vector<std::byte> bytes;
  };

  void SetUp() override {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kTestKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &key, nullptr),
              ERROR_SUCCESS);
    ASSERT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, key), ERROR_SUCCESS);
    RegCloseKey(key);
  }
  void TearDown() override {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
  }

  static bool KeyExists() {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kPreferences, 0, KEY_READ, &key) != ERROR_SUCCESS) {
      return false;
    }
    RegCloseKey(key);
    return true;
  }
  static Stored Find(const wchar_t* name) {
    Stored stored;
    HKEY key = nullptr;
    RegOpenKeyExW(HKEY_CURRENT_USER, kPreferences, 0, KEY_READ, &key);
    DWORD size = 0;
    RegQueryValueExW(key, name, nullptr, &stored.type, nullptr, &size);
    stored.bytes.resize(size);
    RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(stored.bytes.data()),
                     &size);
    RegCloseKey(key);
    return stored;
  }
  static void Put(const wchar_t* name, DWORD type, std::span<const std::byte> bytes) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kPreferences, name, type, bytes.data(),
                              static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
  }

  PreferencesStore& store = SystemPreferences();
};

TEST_F(Registry, IsMadeByTheFirstOpening) {
  EXPECT_FALSE(KeyExists());
  ASSERT_TRUE(store.Open());
  store.Close();
  EXPECT_TRUE(KeyExists());
}

TEST_F(Registry, KeepsTextWithoutItsTerminator) {
  constexpr char16_t kText[] = u"10.0.0.1";
  const auto bytes = std::as_bytes(std::span(kText, 8));  // a zero unit stands behind it
  ASSERT_TRUE(store.Open());
  store.Write(u"Address", PreferenceType::kText, bytes);
  std::array<std::byte, 64> buffer;
  EXPECT_EQ(store.Read(u"Address", buffer), bytes.size());
  store.Close();
  const Stored stored = Find(L"Address");
  EXPECT_EQ(stored.type, DWORD{REG_SZ});
  EXPECT_TRUE(std::ranges::equal(stored.bytes, bytes)) << stored.bytes.size() << " bytes";
  EXPECT_TRUE(std::ranges::equal(std::span(buffer).first(bytes.size()), bytes));
}

TEST_F(Registry, KeepsNumbers) {
  const std::int32_t number = -1;
  ASSERT_TRUE(store.Open());
  store.Write(u"StillIndex", PreferenceType::kNumber, std::as_bytes(std::span(&number, 1)));
  store.Close();
  const Stored stored = Find(L"StillIndex");
  EXPECT_EQ(stored.type, DWORD{REG_DWORD});
  EXPECT_EQ(stored.bytes, std::vector<std::byte>(4, std::byte{0xFF}));
}

TEST_F(Registry, ReadsEveryTypeAndNothingThatDoesNotFit) {
  const std::vector<std::byte> value(64, std::byte{0x31});
  ASSERT_TRUE(store.Open());
  for (const DWORD type : {REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, REG_QWORD}) {
    for (const std::size_t size : {0, 1, 3, 4, 62, 63, 64}) {
      Put(L"Address", type, std::span(value).first(size));
      std::array<std::byte, 65> buffer;
      buffer.fill(std::byte{0x77});
      EXPECT_EQ(store.Read(u"Address", std::span(buffer).first(64)), size) << type;
      EXPECT_TRUE(std::ranges::equal(std::span(buffer).first(size), std::span(value).first(size)));
      EXPECT_EQ(buffer[size], std::byte{0x77}) << "nothing behind the value is touched";
      if (size == 0) continue;
      EXPECT_EQ(store.Read(u"Address", std::span(buffer).first(size - 1)), std::nullopt) << type;
    }
  }
  EXPECT_EQ(store.Read(u"StillIndex", {}), std::nullopt) << "there is none";
  store.Close();
}

}  // namespace
}  // namespace mixdecks
