// Whose windows the dialog's boxes are: the host's, as far as it names one.
#include <gtest/gtest.h>

#include "platform/message_box.h"
#include "tests/dialog/dialog_rig.h"

namespace mixdecks {
namespace {

using testing::DialogRig;

constexpr std::uint32_t kFirmware = 0x63666966;

class BoxOwner : public ::testing::Test {
 protected:
  void SetUp() override {
    previous = SetMessageBoxPresenter(
        [this](void* owner, const char*, const char*, std::uint32_t) { owners.push_back(owner); });
    rig.platform.parentWindow = &window;
  }
  void TearDown() override { SetMessageBoxPresenter(std::move(previous)); }

  /// Shows every box of the dialog that can be open once it is.
  void ShowThemAll() {
    rig.OpenConnected();
    rig.state.uiHandler->OnMessageBox(u"Error", u"An unknown error has occured.");
    rig.state.uiHandler->OnConnectResult(false, kFirmware, 0, 0);
    rig.state.uiHandler->OnConnectResult(true, 0, 20, 4);
    rig.script.readingRunsOutOfMemory = true;
    rig.dialog->Click(kExportButton);
  }

  DialogRig rig;
  int window = 0;
  MessageBoxPresenter previous;
  std::vector<void*> owners;
};

TEST_F(BoxOwner, IsTheHostsWindow) {
  ShowThemAll();
  EXPECT_EQ(owners, std::vector<void*>(3, &window));
}

TEST_F(BoxOwner, IsTheHostsWindowWithoutTheService) {
  rig.script.serviceMissing = true;
  rig.Open();
  EXPECT_EQ(owners, std::vector<void*>{&window});
}

TEST_F(BoxOwner, IsNobodyWithoutAHostsWindow) {
  rig.platform.parentWindow = nullptr;
  ShowThemAll();
  EXPECT_EQ(owners, std::vector<void*>(3, nullptr));
}

TEST_F(BoxOwner, IsNobodyWithoutAPlatformRecord) {
  rig.record.platform = nullptr;
  ShowThemAll();
  EXPECT_EQ(owners, std::vector<void*>(3, nullptr));
}

}  // namespace
}  // namespace mixdecks
