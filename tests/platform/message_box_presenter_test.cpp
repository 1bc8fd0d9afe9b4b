// What the portable adapter has beyond the system's boxes: a presenter that can be exchanged.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "platform/message_box.h"

namespace mixdecks {
namespace {

TEST(MessageBoxPresenter, GetsOwnerAndFlagsAsGiven) {
  int window = 0;
  void* seenOwner = nullptr;
  std::uint32_t seenFlags = 0;
  MessageBoxPresenter previous =
      SetMessageBoxPresenter([&](void* owner, const char*, const char*, std::uint32_t flags) {
        seenOwner = owner;
        seenFlags = flags;
      });
  ShowMessageBox(&window, "text", "caption", kMessageBoxIconError);
  SetMessageBoxPresenter(std::move(previous));
  EXPECT_EQ(seenOwner, &window);
  EXPECT_EQ(seenFlags, 16U);
}

TEST(MessageBoxPresenter, MayInstallAnotherWhileABoxIsOpen) {
  std::string shown;
  MessageBoxPresenter previous =
      SetMessageBoxPresenter([&](void*, const char* text, const char*, std::uint32_t) {
        shown += text;
        SetMessageBoxPresenter([&](void*, const char* later, const char*, std::uint32_t) {
          shown += std::string(",") + later;
        });
      });
  ShowMessageBox(nullptr, "first", "", 0);
  ShowMessageBox(nullptr, "second", "", 0);
  SetMessageBoxPresenter(std::move(previous));
  EXPECT_EQ(shown, "first,second");
}

TEST(MessageBoxPresenter, WithoutOneBoxesArePrinted) {
  MessageBoxPresenter previous = SetMessageBoxPresenter({});
  ::testing::internal::CaptureStderr();
  ShowMessageBox(nullptr, "It broke.", "Error", kMessageBoxIconError);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Error: It broke.\n");
  SetMessageBoxPresenter(std::move(previous));
}

TEST(MessageBoxPresenter, HandsBackTheOneBefore) {
  MessageBoxPresenter original = SetMessageBoxPresenter({});
  EXPECT_FALSE(SetMessageBoxPresenter([](void*, const char*, const char*, std::uint32_t) {}));
  EXPECT_TRUE(SetMessageBoxPresenter(std::move(original)));
}

}  // namespace
}  // namespace mixdecks
