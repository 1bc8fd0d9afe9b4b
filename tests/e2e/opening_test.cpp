// Opening the dialog: what it shows, where it stands, what it kept from before.
#include "dialog/window_messages.h"
#include "tests/e2e/host_window.h"
#include "tests/e2e/plugin_fixture.h"

namespace mixdecks::e2e {
namespace {

using simulator::ScriptStep;

const std::vector<int> kAllButTheAddress = {1010, 1012, 1013, 1014, 1015, 1018, 1020, 1021, 1022};

class Opening : public PluginTest {};

/// A switcher that never answers.
simulator::Scenario NoSwitcher() {
  simulator::Scenario scenario;
  scenario.addresses = {u"203.0.113.1"};
  return scenario;
}

TEST_F(Opening, ShowsDefaultsWithoutAKey) {
  Session session(NoSwitcher());
  EXPECT_FALSE(PreferencesKeyExists());
  const std::int16_t result = session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    EXPECT_EQ(dialog.Text(kAddressEdit), u"192.168.10.240");
    EXPECT_EQ(dialog.Caption(), u"No communication");
    EXPECT_EQ(dialog.DisabledControls(), kAllButTheAddress);
    EXPECT_EQ(dialog.Text(kNameEdit), u"Untitled-1");
    EXPECT_EQ(dialog.Text(kStatusLine), u"");
    EXPECT_TRUE(dialog.IsChecked(kPremultiplyCheck));
    EXPECT_TRUE(dialog.IsChecked(kDoNothingRadio));
    EXPECT_TRUE(dialog.Slots().empty());
    EXPECT_EQ(SendMessageW(dialog.Control(kAddressEdit), EM_GETLIMITTEXT, 0, 0), 15);
    EXPECT_TRUE(PreferencesKeyExists()) << "made by the first read";
    dialog.PressClose();
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
  EXPECT_EQ(ReadTextPreference(L"Address"), u"192.168.10.240");
  EXPECT_EQ(ReadPreference(L"StillIndex"), NumberValue(0));
  EXPECT_EQ(session.host.DataWord(), 0);
  EXPECT_EQ(session.host.OpenHandles(), 0U);
}

TEST_F(Opening, TakesPreferencesAndTheDocumentsName) {
  WritePreference(L"Address", TextValue(u"10.0.0.1"));
  WritePreference(L"StillIndex", NumberValue(4));
  HostDocument document = DocumentOf(BusyPicture(8, 8), false);
  document.fileName = "C:\\pictures\\a.b\\Lower third.v2.psd";
  Session session({}, std::move(document));
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    EXPECT_EQ(dialog.Text(kAddressEdit), u"10.0.0.1") << "shorter than the default";
    EXPECT_EQ(dialog.Text(kNameEdit), u"Lower third");
    EXPECT_EQ(dialog.SelectedSlot(), 4);
  });
}

TEST_F(Opening, TakesAnyDocumentName) {
  struct {
    std::string fileName;
    std::u16string stillName;
  } const cases[] = {{"", u""},
                     {"no dot", u"no dot"},
                     {".psd", u""},
                     {"caf\xE9.psd", u"caf\u00E9"},
                     {"C:\\a.b\\c.d.psd", u"c"},
                     {std::string(250, 'x') + ".psd", std::u16string(250, u'x')},
                     {std::string(251, 'x') + ".psd", std::u16string(251, u'x')},
                     {std::string(254, 'x'), std::u16string(254, u'x')},
                     {std::string(255, 'x'), std::u16string(254, u'x')},
                     {"C:\\" + std::string(240, 'd') + "\\name.psd", u"name"}};
  for (const auto& each : cases) {
    HostDocument document = DocumentOf(BusyPicture(8, 8), false);
    document.fileName = each.fileName;
    Session session(NoSwitcher(), std::move(document));
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitForDialog());
      EXPECT_EQ(dialog.Text(kNameEdit), each.stillName);
    });
  }
}

TEST_F(Opening, SurvivesAnythingInTheRegistry) {
  const std::u16string usual = u"192.168.10.240";
  struct {
    RegistryValue value;
    std::u16string address;
    std::uint32_t slot;
  } const cases[] = {
      {TextValue(u""), usual, 0},
      {TextValue(u"1"), u"1", 0x31},
      {TextValue({u"10.0.0.1\0behind", 15}), u"10.0.0.1", 0},
      {TextValue(std::u16string(31, u'1')), std::u16string(31, u'1'), 0},
      {TextValue(std::u16string(32, u'1')), std::u16string(32, u'1'), 0},
      {TextValue(std::u16string(33, u'1')), usual, 0},
      {TextValue(std::u16string(2000, u'1')), usual, 0},
      {{REG_SZ, {0x31}}, u"", 0x31},
      {{REG_SZ, {0x31, 0, 0x32}}, u"1", 0x320031},
      {{REG_EXPAND_SZ, {0x25, 0, 0x41, 0, 0x25, 0}}, u"%A%", 0},
      {{REG_BINARY, {0x61, 0x62, 0x63, 0x64, 0x65}}, u"\x6261\x6463", 0},
      {{REG_DWORD, {0x61, 0x62, 0x63, 0x64}}, u"\x6261\x6463", 0x64636261},
      {{REG_QWORD, {0x31, 0, 0x32, 0, 0x33, 0, 0x34, 0}}, u"1234", 0},
      {{REG_MULTI_SZ, {0x31, 0, 0x2E, 0, 0, 0, 0x32, 0, 0, 0, 0, 0}}, u"1.", 0},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(::testing::Message() << "value " << &each - cases);
    WritePreference(L"Address", each.value);
    WritePreference(L"StillIndex", each.value);
    Session session(NoSwitcher());
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitForDialog());
      EXPECT_EQ(dialog.Text(kAddressEdit), each.address);
      const bool isValid = each.address == usual || each.address == u"10.0.0.1";
      EXPECT_EQ(dialog.TextColour(kAddressEdit), isValid ? RGB(0, 0, 0) : RGB(255, 0, 0));
    });
    EXPECT_EQ(ReadPreference(L"StillIndex"), NumberValue(each.slot));
  }
}

TEST_F(Opening, KeepsChoicesForTheNextOpening) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.ChooseSlot(6);
    dialog.Press(kMediaPlayer3Radio);
    dialog.Press(kPremultiplyCheck);
    dialog.WaitUntil("the presses arrive", [&] {
      return dialog.IsChecked(kMediaPlayer3Radio) && !dialog.IsChecked(kPremultiplyCheck);
    });
    dialog.PasteOver(kAddressEdit, u"10.0.0.7");
    dialog.PasteOver(kAddressEdit, u"10.0.0");
  });
  EXPECT_EQ(ReadTextPreference(L"Address"), u"10.0.0.7") << "the last valid one";
  EXPECT_EQ(ReadPreference(L"StillIndex"), NumberValue(6));
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    EXPECT_EQ(dialog.Text(kAddressEdit), u"10.0.0.7");
    EXPECT_EQ(dialog.SelectedSlot(), 6);
    EXPECT_TRUE(dialog.IsChecked(kMediaPlayer3Radio));
    EXPECT_FALSE(dialog.IsChecked(kDoNothingRadio));
    EXPECT_FALSE(dialog.IsChecked(kPremultiplyCheck));
  });
}

TEST_F(Opening, ForgetsChoicesWhenTheLibraryIsLoadedAgain) {
  for (int loading = 0; loading < 2; ++loading) {
    Session session;
    session.Start([](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      EXPECT_TRUE(dialog.IsChecked(kDoNothingRadio));
      EXPECT_TRUE(dialog.IsChecked(kPremultiplyCheck));
      dialog.Press(kMediaPlayer1Radio);
      dialog.Press(kPremultiplyCheck);
      dialog.WaitUntil("the presses arrive", [&] {
        return dialog.IsChecked(kMediaPlayer1Radio) && !dialog.IsChecked(kPremultiplyCheck);
      });
    });
  }
}

void ExpectPlaceOver(HWND parent, const RECT& area) {
  Session session(NoSwitcher());
  session.host.SetParentWindow(parent);
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitForDialog());
    const RECT place = dialog.Rectangle();
    const POINT corner = PlaceOver(area, place);
    EXPECT_EQ(place.left, corner.x);
    EXPECT_EQ(place.top, corner.y);
    EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), parent);
  });
}

TEST_F(Opening, StandsOverTheHostsWindow) {
  const HostWindow host(100, 50, 1000, 800);
  ExpectPlaceOver(host.Get(), {100, 50, 1100, 850});
}

TEST_F(Opening, StandsOverAHostLeftOfTheScreen) {
  const HostWindow host(-1200, -300, 1000, 800);
  ExpectPlaceOver(host.Get(), {-1200, -300, -200, 500});
}

TEST_F(Opening, StandsOverTheDesktopWithoutAHostsWindow) {
  RECT desktop{};
  GetClientRect(GetDesktopWindow(), &desktop);
  ExpectPlaceOver(nullptr, desktop);
}

TEST_F(Opening, DoesWithoutAPlatformRecord) {
  Session session;
  session.host.Record().platform = nullptr;
  const std::int16_t result = session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    EXPECT_EQ(GetWindow(dialog.Window(), GW_OWNER), nullptr);
  });
  EXPECT_EQ(result, kHostResultDone);
}

TEST_F(Opening, RefusesADocumentThatIsNotRgb) {
  HostDocument document = DocumentOf(BusyPicture(8, 8), false);
  document.imageMode = 4;
  Session session({}, std::move(document));
  EXPECT_EQ(session.Start([](DialogDriver&) {}), kHostResultWrongMode);
}

// A missing service

TEST_F(Opening, TellsOnceThatTheServiceIsMissing) {
  simulator::Scenario scenario;
  scenario.service = simulator::ServicePresence::kAbsent;
  Session session(scenario);
  const HostWindow host(100, 50, 1000, 800);
  session.host.SetParentWindow(host.Get());
  const std::int16_t result = session.Start([&](DialogDriver& dialog) {
    ExpectServiceBox(dialog, host.Get());
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
}

TEST_F(Opening, TellsNobodysOwnThatTheServiceIsMissing) {
  simulator::Scenario scenario;
  scenario.service = simulator::ServicePresence::kAbsent;
  Session session(scenario);
  session.host.Record().platform = nullptr;
  session.Start([](DialogDriver& dialog) {
    ExpectServiceBox(dialog, nullptr);
    dialog.WaitUntilClosed();
  });
}

TEST_F(Opening, TellsTwiceThatTheServiceGivesNothing) {
  simulator::Scenario scenario;
  scenario.service = simulator::ServicePresence::kNull;
  Session session(scenario);
  session.Start([&](DialogDriver& dialog) {
    ExpectServiceBox(dialog, nullptr);
    ExpectServiceBox(dialog, nullptr);
    dialog.WaitUntilClosed();
  });
}

}  // namespace
}  // namespace mixdecks::e2e
