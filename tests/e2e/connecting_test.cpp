// The address field, the connection and the slot list.
#include "dialog/window_messages.h"
#include "tests/e2e/host_window.h"
#include "tests/e2e/plugin_fixture.h"
#include "tests/e2e/wait_for.h"

namespace mixdecks::e2e {
namespace {

using simulator::Action;
using simulator::Point;
using simulator::ScriptStep;

constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kRed = 0x0000FF;

class Connecting : public PluginTest {};

TEST_F(Connecting, MasksKeysAndNotPasting) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.PasteOver(kAddressEdit, u"10.0.0");
    SendMessageW(dialog.Control(kAddressEdit), EM_SETSEL, 100, 100);
    dialog.TypeKeys(kAddressEdit, u"x. ,7:-8\b");
    dialog.WaitUntil("keys pass the mask",
                     [&] { return dialog.Text(kAddressEdit) == u"10.0.0.7"; });
    // 8 and 9 are too many; the last key shows that they were dealt with.
    dialog.TypeKeys(kAddressEdit, u"123456789\b0");
    dialog.WaitUntil("keys reach the limit",
                     [&] { return dialog.Text(kAddressEdit) == u"10.0.0.71234560"; });
    dialog.PasteOver(kAddressEdit, u"10.a.0.1");
    EXPECT_EQ(dialog.Text(kAddressEdit), u"10.a.0.1");
    EXPECT_EQ(dialog.TextColour(kAddressEdit), kRed);
  });
}

TEST_F(Connecting, ShowsMalformedAddressesInRed) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    EXPECT_EQ(dialog.TextColour(kAddressEdit), kBlack);
    EXPECT_EQ(dialog.TextColour(kNameEdit), std::nullopt) << "not the dialog's to choose";
    for (const char16_t* text : {u"1.2.3", u"1.2.3.4.5", u"1.2.3.a", u"", u"255.255.255.255",
                                 u"1.2.3.256", u"1..2.3", u"1.2.3.08"}) {
      dialog.PasteOver(kAddressEdit, text);
      EXPECT_EQ(dialog.TextColour(kAddressEdit), kRed) << dialog.Text(kAddressEdit).size();
      EXPECT_EQ(dialog.Caption(), u"No communication");
      EXPECT_FALSE(dialog.IsEnabled(kExportButton));
      EXPECT_TRUE(dialog.IsEnabled(kAddressEdit));
    }
    SetWindowTextW(dialog.Control(kAddressEdit), L"192.168.100.0240");
    EXPECT_EQ(dialog.TextColour(kAddressEdit), kRed) << "sixteen characters";
    dialog.PasteOver(kAddressEdit, u"192.168.10.240");
    EXPECT_EQ(dialog.TextColour(kAddressEdit), kBlack);
    dialog.WaitUntilConnected();
  });
}

TEST_F(Connecting, TakesAnotherEditsDeviceContextForACommand) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    const auto name = reinterpret_cast<LPARAM>(dialog.Control(kNameEdit));
    constexpr WPARAM kContext = 0x7A500000;
    EXPECT_EQ(SendMessageW(dialog.Window(), WM_CTLCOLOREDIT, kContext | kPremultiplyCheck, name),
              1);
    EXPECT_NE(SendMessageW(dialog.Window(), WM_CTLCOLOREDIT, kContext | kNameEdit, name), 1);
  });
}

TEST_F(Connecting, ListsTheSlots) {
  Session session;
  session.simulator.StoreStill(2, u"Bars", ExpectedFrame(BusyPicture(1920, 1080), false, false));
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.WaitUntil("the still is listed", [&] {
      const std::vector<std::u16string> slots = dialog.Slots();
      return slots.size() == 20 && slots[2] == u"3. Bars";
    });
    EXPECT_EQ(dialog.Slots()[0], u"1. Empty");
    EXPECT_EQ(dialog.Slots()[19], u"20. Empty");
    EXPECT_EQ(dialog.SelectedSlot(), 0);
    EXPECT_TRUE(dialog.DisabledControls().empty());
  });
}

TEST_F(Connecting, FollowsOtherStations) {
  Session session;
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    const auto frame = ExpectedFrame(BusyPicture(1920, 1080), false, false);
    session.simulator.StoreStill(0, u"Theirs", frame);
    dialog.WaitUntil("the still appears", [&] { return dialog.Slots()[0] == u"1. Theirs"; });
    EXPECT_EQ(dialog.SelectedSlot(), 0) << "the selection is put back";
    session.simulator.ClearStill(0);
    dialog.WaitUntil("the still goes", [&] { return dialog.Slots()[0] == u"1. Empty"; });
  });
}

TEST_F(Connecting, OffersThePlayersThereAre) {
  const std::vector<int> players = {1013, 1014, 1021, 1022};
  for (std::uint32_t count = 0; count <= 4; ++count) {
    simulator::Scenario scenario;
    scenario.players = count;
    Session session(scenario);
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      dialog.WaitUntil("the players are limited", [&] {
        return dialog.DisabledControls() ==
               std::vector<int>(players.begin() + count, players.end());
      });
    });
  }
}

TEST_F(Connecting, TriesAgainUntilTheSwitcherAnswers) {
  simulator::Scenario scenario;
  scenario.refuseDelay = std::chrono::milliseconds(1);
  scenario.script = {ScriptStep{.at = Point::kConnectTo, .action = Action::kFail, .times = 5}};
  Session session(scenario);
  std::atomic<int> attempts = 0;
  std::atomic<bool> seen = false;
  session.simulator.SetPointHook(Point::kConnectTo, [&](const auto&) {
    if (++attempts == 3) WaitFor([&] { return seen.load(); });
  });
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    dialog.WaitUntil("the third attempt", [&] { return attempts == 3; });
    EXPECT_EQ(dialog.Caption(), u"No communication");
    EXPECT_FALSE(dialog.IsEnabled(kExportButton));
    EXPECT_TRUE(dialog.IsEnabled(kAddressEdit));
    seen = true;
    EXPECT_TRUE(dialog.WaitUntilConnected());
  });
  EXPECT_EQ(attempts, 6) << "none beside those that were needed";
}

TEST_F(Connecting, TellsOfFirmwareOnceAndTriesNoMore) {
  simulator::Scenario scenario;
  scenario.refuseDelay = std::chrono::milliseconds(1);
  scenario.script = {ScriptStep{.at = Point::kConnectTo,
                                .action = Action::kFail,
                                .times = ScriptStep::kAlways,
                                .reason = kReasonFirmware}};
  Session session(scenario);
  std::atomic<int> connects = 0;
  session.simulator.SetPointHook(Point::kConnectTo, [&](const auto&) { ++connects; });
  const HostWindow host(100, 50, 1000, 800);
  session.host.SetParentWindow(host.Get());
  session.Start([&](DialogDriver& dialog) {
    ExpectBox(dialog, host.Get(), "ORVA Switcher software update required",
              "Please connect the switcher via USB and run the ORVA Switcher Utility");
    ASSERT_TRUE(dialog.WaitForDialog());
    EXPECT_EQ(dialog.Caption(), u"No communication");
    EXPECT_EQ(connects, 1);
    dialog.PasteOver(kAddressEdit, u"10.0.0.1");
    const std::optional<MessageBoxView> second = dialog.WaitForBox();
    ASSERT_TRUE(second.has_value());
    EXPECT_EQ(connects, 2) << "another address is tried, once";
    dialog.Answer(*second);
  });
}

TEST_F(Connecting, ConnectsAgainAfterADisconnect) {
  Session session;
  std::atomic<int> connects = 0;
  std::atomic<bool> seen = false;
  session.simulator.SetPointHook(Point::kConnectTo, [&](const auto&) {
    if (++connects == 2) WaitFor([&] { return seen.load(); });
  });
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    session.simulator.Disconnect();
    dialog.WaitUntil("it connects again", [&] { return connects == 2; });
    EXPECT_EQ(dialog.Caption(), u"No communication");
    EXPECT_EQ(dialog.DisabledControls(),
              (std::vector<int>{1010, 1012, 1013, 1014, 1015, 1018, 1020, 1021, 1022}));
    seen = true;
    dialog.WaitUntilConnected();
    EXPECT_TRUE(dialog.DisabledControls().empty());
  });
}

TEST_F(Connecting, GoesToTheAddressTypedMeanwhile) {
  simulator::Scenario scenario;
  scenario.addresses = {u"192.168.10.240", u"10.0.0.2"};
  Session session(scenario);
  std::atomic<int> connects = 0;
  std::atomic<bool> typed = false;
  std::atomic<bool> seen = false;
  session.simulator.SetPointHook(Point::kConnectTo, [&](const auto&) {
    const bool isFirst = ++connects == 1;
    WaitFor([&] { return isFirst ? typed.load() : seen.load(); });
  });
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    dialog.WaitUntil("the first connect is under way", [&] { return connects == 1; });
    dialog.PasteOver(kAddressEdit, u"10.0.0.2");
    typed = true;
    dialog.WaitUntil("the second connect follows", [&] { return connects == 2; });
    EXPECT_EQ(dialog.Caption(), u"No communication") << "with the former address's result applied";
    EXPECT_FALSE(dialog.IsEnabled(kExportButton));
    seen = true;
    dialog.WaitUntilConnected();
  });
  EXPECT_EQ(ReadTextPreference(L"Address"), u"10.0.0.2");
}

}  // namespace
}  // namespace mixdecks::e2e
