// What each result does to the dialog's controls.
#include <gtest/gtest.h>

#include "dialog/ui_command_handler_win.h"
#include "tests/dialog/dialog_rig.h"

namespace mixdecks {
namespace {

using testing::AllButTheAddress;
using testing::DialogRig;

/// A dialog without a control, so that nothing but the handler changes it.
class Handler : public ::testing::Test {
 protected:
  void SetUp() override {
    rig.script.noSwitcherSide = true;
    rig.Open();
  }
  const std::vector<std::u16string>& Items() { return rig.dialog->Control(kSlotList).items; }
  std::int32_t Selection() { return rig.dialog->Control(kSlotList).selection; }
  UICommandHandler& handler() { return *rig.state.uiHandler; }

  DialogRig rig;
};

TEST_F(Handler, ListsEmptySlotsAndSelectsTheLastUsed) {
  rig.state.stillIndex = 2;
  handler().OnConnectResult(true, 0, 3, 4);
  EXPECT_EQ(Items(), (std::vector<std::u16string>{u"1. Empty", u"2. Empty", u"3. Empty"}));
  EXPECT_EQ(Selection(), 2);
  EXPECT_EQ(rig.state.connectInProgress, false);
  handler().OnConnectResult(true, 0, 1, 4);
  EXPECT_EQ(Items().size(), 1U) << "listed anew";
  EXPECT_EQ(Selection(), -1) << "there is no such slot here";
}

TEST_F(Handler, OffersThePlayersThereAre) {
  const std::vector<int> players = {1013, 1014, 1021, 1022};
  for (const int count : {0, 1, 2, 3, 4, 5, -1}) {
    handler().OnConnectResult(true, 0, 20, count);
    const bool all = count < 0 || count > 4;
    const auto left = players.begin() + (all ? 4 : count);
    EXPECT_EQ(rig.DisabledControls(), std::vector<int>(left, players.end())) << count;
  }
}

TEST_F(Handler, KeepsTheCheckOfAPlayerThatIsNotThere) {
  handler().OnConnectResult(true, 0, 20, 4);
  rig.dialog->Click(kMediaPlayer4Radio);
  handler().OnConnectResult(true, 0, 20, 1);
  EXPECT_TRUE(rig.dialog->Control(kMediaPlayer4Radio).checked);
  EXPECT_EQ(rig.state.afterExportChoice, 4U);
}

TEST_F(Handler, ShowsWhatASlotHoldsAndKeepsTheSelection) {
  rig.state.stillIndex = 1;
  handler().OnConnectResult(true, 0, 3, 4);
  handler().OnStillInfo(1, true, u"Bars");
  handler().OnStillInfo(0, true, u"Ramp");
  EXPECT_EQ(Items(), (std::vector<std::u16string>{u"1. Ramp", u"2. Bars", u"3. Empty"}));
  EXPECT_EQ(Selection(), 1);
  handler().OnStillInfo(1, false, u"Bars");
  EXPECT_EQ(Items()[1], u"2. Empty");
  EXPECT_EQ(Selection(), 1);
}

TEST_F(Handler, IgnoresASlotThatIsNotListed) {
  handler().OnConnectResult(true, 0, 2, 4);
  handler().OnStillInfo(7, true, u"Bars");
  EXPECT_EQ(Items().size(), 2U);
}

TEST_F(Handler, ListsAllNamesAtTheirPlaces) {
  handler().OnConnectResult(true, 0, 20, 4);
  for (std::uint32_t slot = 0; slot < 20; ++slot)
    handler().OnStillInfo(slot, true, u"same");
  for (std::uint32_t slot = 0; slot < 20; ++slot) {
    const std::string number = std::to_string(slot + 1);
    EXPECT_EQ(Items()[slot], std::u16string(number.begin(), number.end()) + u". same");
  }
}

TEST_F(Handler, WantsAConnectAfterAFailedOne) {
  handler().OnConnectResult(true, 0, 20, 4);
  rig.state.connectPending = false;
  rig.state.connectInProgress = true;
  handler().OnConnectResult(false, 0, 0, 0);
  EXPECT_FALSE(rig.state.connectInProgress);
  EXPECT_TRUE(rig.state.connectPending);
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress());
}

TEST_F(Handler, PostsTheCloseAfterAnExport) {
  rig.dialog->StartTimer(kExportTimer, 500);
  handler().OnExportFinished(true);
  EXPECT_FALSE(rig.dialog->HasTimer(kExportTimer));
  EXPECT_EQ(rig.dialog->EndValue(), std::nullopt) << "not from inside the handler";
  rig.HandleUntilEnd();
}

TEST_F(Handler, EnablesAllAfterAFailedExport) {
  rig.dialog->StartTimer(kExportTimer, 500);
  rig.state.stillIndex = 0;
  handler().OnExportFinished(false);
  EXPECT_FALSE(rig.dialog->HasTimer(kExportTimer));
  EXPECT_TRUE(rig.DisabledControls().empty());
  EXPECT_EQ(rig.dialog->Caption(), u"ORVA Switcher Media Pool");
}

TEST_F(Handler, WantsAConnectAfterADisconnect) {
  handler().OnConnectResult(true, 0, 20, 4);
  rig.dialog->StartTimer(kExportTimer, 500);
  rig.state.connectPending = false;
  handler().OnDisconnected();
  EXPECT_TRUE(rig.state.connectPending);
  EXPECT_FALSE(rig.dialog->HasTimer(kExportTimer));
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress());
  EXPECT_EQ(rig.dialog->Caption(), u"No communication");
}

}  // namespace
}  // namespace mixdecks
