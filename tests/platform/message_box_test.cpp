#include "platform/message_box.h"

#include <gtest/gtest.h>

#include "tests/platform/box_answerer.h"

namespace mixdecks {
namespace {

using testing::AnswerBoxes;
using testing::ShownBox;

class MessageBoxes : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!testing::CanShowBoxes()) GTEST_SKIP() << "no screen to show a box on";
  }
};

TEST_F(MessageBoxes, ShowTextAndCaptionWithAnIcon) {
  const auto boxes =
      AnswerBoxes([] { ShowMessageBox(nullptr, "It broke.", "Error", kMessageBoxIconError); });
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0], (ShownBox{"It broke.", "Error", true}));
}

TEST_F(MessageBoxes, ReturnWhenAnswered) {
  bool open = false;
  AnswerBoxes(
      [&] {
        ShowMessageBox(nullptr, "text", "caption", kMessageBoxIconError);
        EXPECT_TRUE(open);
      },
      [&] { open = true; });
}

}  // namespace
}  // namespace mixdecks
