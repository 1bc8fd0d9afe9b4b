// The about box on a dialog in memory.
#include "dialog/about_dialog.h"

#include <gtest/gtest.h>

#include "dialog/headless_dialog.h"
#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

class AboutBox : public ::testing::Test {
 protected:
  void SetUp() override { EXPECT_EQ(dialog.Send(kWmInitDialog, 0, 0), 1); }

  HeadlessDialog dialog{kAboutDialogTemplate, AboutDialogProc};
};

TEST_F(AboutBox, SaysVersionAndNotice) {
  EXPECT_EQ(dialog.Control(kAboutVersion).text, u"Version 1.0");
  EXPECT_EQ(dialog.Control(kAboutNotice).text,
            u"Copyright (C) Tollenmark Design. All rights reserved.");
}

TEST_F(AboutBox, StandsAThirdDown) {
  EXPECT_EQ(dialog.left, ((1920 - dialog.placement.width) >> 1) - 24);
  EXPECT_EQ(dialog.top, (1080 - dialog.placement.height) / 3);
}

TEST_F(AboutBox, ClosesAtEscapeAndReturnAlone) {
  for (std::uintptr_t key = 0; key < 256; ++key) {
    HeadlessDialog each(kAboutDialogTemplate, AboutDialogProc);
    EXPECT_EQ(each.Send(kWmChar, key, 0), 1);
    EXPECT_EQ(each.EndValue().has_value(), key == 27 || key == 13) << key;
  }
}

TEST_F(AboutBox, ClosesAtAClick) {
  EXPECT_EQ(dialog.Send(kWmLeftButtonDown, 0, 0), 1);
  EXPECT_EQ(dialog.EndValue(), 0);
}

TEST_F(AboutBox, ClosesAtTheCommandsThatKeysBecome) {
  for (const int command : {1, 2}) {
    HeadlessDialog each(kAboutDialogTemplate, AboutDialogProc);
    EXPECT_EQ(each.Send(kWmCommand, CommandParameter(command, 0), 0), 1);
    EXPECT_EQ(each.EndValue(), 0);
  }
}

TEST_F(AboutBox, IgnoresEverythingElse) {
  EXPECT_EQ(dialog.Send(kWmCommand, CommandParameter(kAboutVersion, 0), 0), 0);
  EXPECT_EQ(dialog.Send(kWmClose, 0, 0), 0);
  EXPECT_EQ(dialog.Send(kWmTimer, 1, 0), 0);
  EXPECT_EQ(dialog.EndValue(), std::nullopt);
}

}  // namespace
}  // namespace mixdecks
