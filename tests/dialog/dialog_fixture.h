// An export dialog in memory for each test, and one that may show message boxes.
#pragma once

#include <gtest/gtest.h>

#include "tests/dialog/dialog_rig.h"
#include "tests/platform/box_answerer.h"

namespace mixdecks::testing {

class Dialog : public ::testing::Test {
 protected:
  DialogRig rig;
};

class DialogWithBoxes : public Dialog {
 protected:
  void SetUp() override {
    if (!CanShowBoxes()) GTEST_SKIP() << "no screen to show a box on";
  }
};

}  // namespace mixdecks::testing
