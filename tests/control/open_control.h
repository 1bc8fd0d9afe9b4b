// What the tests of an open ExportControl begin and end with.
#pragma once

#include <gtest/gtest.h>

#include "tests/control/export_control_bench.h"
#include "tests/control/wake_counter.h"

namespace mixdecks::testing {

/// Opens a control whose wake-ups are counted, and closes it if the test did not.
class OpenControl : public ::testing::Test {
 protected:
  void SetUp() override {
    bench_.onWake = [this] { wakes_.Post(); };
    bench_.Open();
    ASSERT_NE(bench_.control, nullptr);
  }
  void TearDown() override {
    if (bench_.control != nullptr) {
      EXPECT_EQ(bench_.Close(), 0);
    }
    EXPECT_EQ(bench_.sides, 0);
  }

  /// Runs `count` results as they come in.
  void Pump(int count) {
    for (int i = 0; i < count; ++i) {
      wakes_.Take();
      bench_.RunOne();
    }
  }

  WakeCounter wakes_;
  ExportControlBench bench_;
};

}  // namespace mixdecks::testing
