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

/// Answers the box that tells of a missing service.
inline void ExpectServiceBox(DialogDriver& dialog, HWND owner) {
  const std::optional<MessageBoxView> box = dialog.WaitForBox();
  ASSERT_TRUE(box.has_value());
  EXPECT_EQ(box->text,
            "Your Mixdecks installation is missing some components, please try re-installing the "
            "Tollenmark ORVA Software.");
  EXPECT_EQ(box->caption, "Corrupt Installation Detected");
  EXPECT_EQ(box->owner, owner);
  dialog.Answer(*box);
}

}  // namespace mixdecks::e2e
