// The class's entries in the registry, beside those of others.
#include <gtest/gtest.h>
#include <olectl.h>

#include <array>
#include <string>

#include "simulator/com_registration_win.h"
#include "tests/simulator/temporary_folder.h"

namespace mixdecks::simulator {
namespace {

namespace fs = std::filesystem;

constexpr GUID kClass = {
    0x8D1A3B52, 0x6E0F, 0x4C47, {0x9B, 0x21, 0x5C, 0x7E, 0x90, 0xD4, 0xA6, 0xF3}};
constexpr wchar_t kClassKey[] = L"Software\\Classes\\CLSID\\{8D1A3B52-6E0F-4C47-9B21-5C7E90D4A6F3}";
constexpr wchar_t kServerKey[] =
    L"Software\\Classes\\CLSID\\{8D1A3B52-6E0F-4C47-9B21-5C7E90D4A6F3}\\InprocServer32";

/// Keys of the user's stand in for both roots of the registry: nothing of the computer's is
/// touched, and nobody has to be an administrator.
class ComRegistration : public testing::Test {
 protected:
  void SetUp() override { ReplaceRoots(REG_OPTION_NON_VOLATILE); }
  void TearDown() override { RestoreRoots(); }

  /// Nothing lasting can be written below a volatile key: so the machine's root refuses our
  /// entries, as it refuses everybody's but an administrator's.
  void MakeMachineReadOnly() {
    RestoreRoots();
    ReplaceRoots(REG_OPTION_VOLATILE);
  }

  fs::path File(std::string_view name) const {
    test::WriteText(folder_ / name, "");
    return folder_ / name;
  }
  static void Enter(HKEY root, const std::wstring& library) {
    HKEY key = nullptr;
    RegCreateKeyExW(root, kServerKey, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr,
                    &key, nullptr);
    const auto bytes = static_cast<DWORD>((library.size() + 1) * sizeof(wchar_t));
    EXPECT_EQ(RegSetValueExW(key, nullptr, 0, REG_SZ,
                             reinterpret_cast<const BYTE*>(library.c_str()), bytes),
              ERROR_SUCCESS);
    RegCloseKey(key);
  }
  /// Empty when there is none.
  static std::wstring Text(HKEY root, const wchar_t* key, const wchar_t* value) {
    std::array<wchar_t, 1024> text{};
    DWORD bytes = sizeof text;
    RegGetValueW(root, key, value, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return text.data();
  }
  static std::wstring Server(HKEY root) { return Text(root, kServerKey, nullptr); }
  static bool HasClass(HKEY root) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, kClassKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    RegCloseKey(key);
    return true;
  }

 private:
  struct Replacement {
    HKEY root;
    const wchar_t* path;
    HKEY key = nullptr;
  };

  void ReplaceRoots(DWORD machineOptions) {
    DWORD options = machineOptions;
    for (Replacement& replacement : replacements_) {
      RemoveScratch(replacement);  // that a test left behind which was killed
      ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, replacement.path, 0, nullptr, options,
                                KEY_ALL_ACCESS, nullptr, &replacement.key, nullptr),
                ERROR_SUCCESS);
      options = REG_OPTION_NON_VOLATILE;
    }
    for (const Replacement& replacement : replacements_)
      ASSERT_EQ(RegOverridePredefKey(replacement.root, replacement.key), ERROR_SUCCESS);
  }
  void RestoreRoots() {
    for (Replacement& replacement : replacements_) {
      RegOverridePredefKey(replacement.root, nullptr);
      RegCloseKey(replacement.key);
    }
    for (const Replacement& replacement : replacements_)
      RemoveScratch(replacement);
  }
  static void RemoveScratch(const Replacement& replacement) {
    RegDeleteTreeW(HKEY_CURRENT_USER, replacement.path);
  }

  test::TemporaryFolder folder_;
  std::array<Replacement, 2> replacements_ = {{
      {HKEY_LOCAL_MACHINE, L"Software\\Mixdecks registration test, machine"},
      {HKEY_CURRENT_USER, L"Software\\Mixdecks registration test, user"},
  }};

 protected:
  const ServedClass served_ = {kClass, File("Simulator.dll")};
  const std::wstring ours_ = served_.library.wstring();
  const std::wstring theirs_ = File("Service.dll").wstring();
};

TEST_F(ComRegistration, IsTheMachinesAndLeavesNothingBehind) {
  EXPECT_EQ(RegisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), ours_);
  EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kServerKey, L"ThreadingModel"), L"Both");
  EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kClassKey, nullptr), L"Mixdecks switcher simulator");
  EXPECT_FALSE(HasClass(HKEY_CURRENT_USER));
  EXPECT_EQ(RegisterClassEntries(served_), S_OK) << "again";
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK);
  EXPECT_FALSE(HasClass(HKEY_LOCAL_MACHINE));
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK) << "again";
}

TEST_F(ComRegistration, IsTheUsersWhereTheMachineIsNotToBeWritten) {
  MakeMachineReadOnly();
  EXPECT_EQ(RegisterClassEntries(served_), S_OK);
  EXPECT_FALSE(HasClass(HKEY_LOCAL_MACHINE));
  EXPECT_EQ(Server(HKEY_CURRENT_USER), ours_);
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK);
  EXPECT_FALSE(HasClass(HKEY_CURRENT_USER));
}

TEST_F(ComRegistration, LeavesAnothersServerAlone) {
  Enter(HKEY_LOCAL_MACHINE, theirs_);
  EXPECT_EQ(RegisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), theirs_);
  EXPECT_EQ(Text(HKEY_LOCAL_MACHINE, kClassKey, nullptr), L"");
  EXPECT_EQ(Server(HKEY_CURRENT_USER), ours_);
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), theirs_);
  EXPECT_FALSE(HasClass(HKEY_CURRENT_USER));
}

TEST_F(ComRegistration, LeavesAnothersServerOfTheUserAlone) {
  MakeMachineReadOnly();
  Enter(HKEY_CURRENT_USER, theirs_);
  EXPECT_EQ(RegisterClassEntries(served_), SELFREG_E_CLASS);
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_CURRENT_USER), theirs_);
}

TEST_F(ComRegistration, LooksForAnothersServerAsTheSystemDoes) {
  for (const std::wstring& written : {L"\"" + theirs_ + L"\"", std::wstring(L"kernel32.dll")}) {
    Enter(HKEY_LOCAL_MACHINE, written);
    EXPECT_EQ(RegisterClassEntries(served_), S_OK);
    EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), written);
    EXPECT_EQ(Server(HKEY_CURRENT_USER), ours_);
  }
}

TEST_F(ComRegistration, TakesThePlaceOfAServerThatIsGone) {
  fs::remove(theirs_);
  Enter(HKEY_LOCAL_MACHINE, theirs_);
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), theirs_) << "not ours to take out";
  EXPECT_EQ(RegisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), ours_);
}

TEST_F(ComRegistration, TakesThePlaceOfItsOwnCopies) {
  const test::TemporaryFolder elsewhere;
  const ServedClass copy = {kClass, elsewhere / "SIMULATOR.DLL"};
  test::WriteText(copy.library, "");
  EXPECT_EQ(RegisterClassEntries(copy), S_OK);
  EXPECT_EQ(RegisterClassEntries(served_), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), ours_);
  EXPECT_EQ(UnregisterClassEntries(copy), S_OK);
  EXPECT_EQ(Server(HKEY_LOCAL_MACHINE), ours_) << "which a copy does not take out";
}

TEST_F(ComRegistration, KnowsItsLibraryByOtherNames) {
  const fs::path roundabout = served_.library.parent_path() / "." / "SIMULATOR.dll";
  Enter(HKEY_LOCAL_MACHINE, roundabout.wstring());
  EXPECT_EQ(UnregisterClassEntries(served_), S_OK);
  EXPECT_FALSE(HasClass(HKEY_LOCAL_MACHINE));
}

}  // namespace
}  // namespace mixdecks::simulator
