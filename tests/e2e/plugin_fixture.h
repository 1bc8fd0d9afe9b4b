// Every test begins like a user who never ran the plug-in.
#pragma once

#include <gtest/gtest.h>

#include "tests/e2e/preferences_key.h"
#include "tests/e2e/session.h"

namespace mixdecks::e2e {

class PluginTest : public ::testing::Test {
 protected:
  void SetUp() override { DeletePreferencesKey(); }
  void TearDown() override {
    EXPECT_EQ(GetModuleHandleW(kPluginFile), nullptr) << "the library was unloaded";
  }
};

/// Waits for a box that says so, and answers it.
inline void ExpectBox(DialogDriver& dialog, HWND owner, const char* caption, const char* text) {
  const std::optional<MessageBoxView> box = dialog.WaitForBox();
  ASSERT_TRUE(box.has_value());
  EXPECT_EQ(box->text, text);
  EXPECT_EQ(box->caption, caption);
  EXPECT_EQ(box->owner, owner);
  EXPECT_TRUE(box->isError);
  dialog.Answer(*box);
}

/// The box that tells of a missing service.
inline void ExpectServiceBox(DialogDriver& dialog, HWND owner) {
  ExpectBox(dialog, owner, "Corrupt Installation Detected",
            "Your Mixdecks installation is missing some components, please try re-installing the "
            "Tollenmark ORVA Software.");
}

}  // namespace mixdecks::e2e
