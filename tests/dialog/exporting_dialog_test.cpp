// The export dialog's decisions from the press of Export on: the export, results, closing, and what
// the next opening finds.
#include "dialog/preferences.h"
#include "tests/dialog/dialog_fixture.h"

namespace mixdecks {
namespace {

using testing::AllButTheAddress;
using testing::Dialog;
using testing::DialogWithBoxes;
using testing::ShownBox;

constexpr std::uint32_t kFirmware = 0x63666966;

// Export

TEST_F(Dialog, ExportsWhatTheFieldsSay) {
  rig.OpenConnected();
  rig.dialog->Choose(kSlotList, 7);
  rig.dialog->Click(kMediaPlayer2Radio);
  rig.dialog->Click(kPremultiplyCheck);
  rig.dialog->PasteOver(kNameEdit, u"Title \xD83D\xDE00");
  EXPECT_TRUE(rig.dialog->Click(kExportButton));
  std::vector<int> all = AllButTheAddress();
  all.insert(all.begin(), kAddressEdit);
  EXPECT_EQ(rig.DisabledControls(), all);
  EXPECT_TRUE(rig.dialog->HasTimer(kExportTimer));
  ASSERT_TRUE(rig.script.WaitForExports(1));
  const testing::SeenExport seen = rig.script.Exports()[0];
  EXPECT_EQ(seen.name, u"Title \xD83D\xDE00");
  EXPECT_EQ(seen.slot, 7U);
  EXPECT_EQ(seen.mediaPlayer, 1);
  EXPECT_FALSE(seen.premultiply);
  EXPECT_TRUE(seen.hasAlpha);
}

TEST_F(Dialog, ExportsToNoPlayerAndToNoSlot) {
  rig.OpenConnected(0, 4);
  rig.dialog->Click(kExportButton);
  ASSERT_TRUE(rig.script.WaitForExports(1));
  EXPECT_EQ(rig.script.Exports()[0].mediaPlayer, -1);
  EXPECT_EQ(rig.script.Exports()[0].slot, 0xFFFFFFFF);
  EXPECT_TRUE(rig.script.Exports()[0].premultiply);
}

TEST_F(Dialog, ExportsToACheckedPlayerThatTheSwitcherLacks) {
  rig.state.afterExportChoice = 4;
  rig.OpenConnected(20, 1);
  EXPECT_FALSE(rig.IsEnabled(kMediaPlayer4Radio));
  rig.dialog->Click(kExportButton);
  ASSERT_TRUE(rig.script.WaitForExports(1));
  EXPECT_EQ(rig.script.Exports()[0].mediaPlayer, 3);
}

TEST_F(Dialog, ExportsTheNameThatStandsThereAtThePress) {
  rig.OpenConnected();
  rig.dialog->PasteOver(kNameEdit, u"first");
  rig.dialog->Type(kNameEdit, u"\b\b\b\b\bsecond");
  rig.dialog->Click(kExportButton);
  rig.dialog->SendToControl(kNameEdit, kWmSetText, 0, reinterpret_cast<std::intptr_t>(u"third"));
  ASSERT_TRUE(rig.script.WaitForExports(1));
  EXPECT_EQ(rig.script.Exports()[0].name, u"second");
}

TEST_F(Dialog, ExportsNamesOfEveryLength) {
  constexpr std::size_t kLongest = 254;  // 255 with the terminator, as the message counts
  const std::u16string names[] = {
      u"",
      u"\xD83D\xDE00",
      std::u16string(kLongest, u'x'),
      std::u16string(kLongest + 1, u'x'),
      std::u16string(kLongest + 2, u'x'),
      std::u16string(300, u'x'),
      std::u16string(kLongest - 1, u'x') + u"\xD83D\xDE00",  // cut between its halves
  };
  std::size_t exports = 0;
  for (const std::u16string& name : names) {
    rig.OpenConnected();
    rig.dialog->PasteOver(kNameEdit, name);
    rig.dialog->Click(kExportButton);
    ASSERT_TRUE(rig.script.WaitForExports(++exports));
    EXPECT_EQ(rig.script.Exports().back().name, name.substr(0, kLongest));
    rig.Close();
  }
}

TEST_F(Dialog, StaysDisabledWhenTheDocumentCannotBeRead) {
  rig.OpenConnected();
  rig.script.readingFails = true;
  rig.dialog->Click(kExportButton);
  EXPECT_TRUE(rig.dialog->HasTimer(kExportTimer));
  EXPECT_EQ(rig.DisabledControls().size(), 10U);
  rig.Close();
  EXPECT_TRUE(rig.script.Exports().empty());
}

TEST_F(Dialog, CountsDotsRoundAndRound) {
  rig.Open();
  for (const char16_t* text : {u"Exporting..", u"Exporting...", u"Exporting.", u"Exporting.."}) {
    rig.dialog->Send(kWmTimer, kExportTimer, 0);
    EXPECT_EQ(rig.dialog->Control(kStatusLine).text, text);
  }
  rig.Close();
  rig.Open();
  rig.dialog->Send(kWmTimer, kExportTimer, 0);
  EXPECT_EQ(rig.dialog->Control(kStatusLine).text, u"Exporting...") << "goes on counting";
}

TEST_F(DialogWithBoxes, SaysSoAndClosesWithoutMemory) {
  rig.OpenConnected();
  rig.script.readingRunsOutOfMemory = true;
  const auto boxes = testing::AnswerBoxes([&] { rig.dialog->Click(kExportButton); });
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].text, "There is not enough memory available to run ORVA Switcher Media Pool");
  EXPECT_EQ(rig.dialog->EndValue(), 0);
  EXPECT_EQ(rig.state.exportControl, nullptr);
}

// Closing and opening again

TEST_F(Dialog, LeavesNothingOpenBehind) {
  rig.OpenConnected();
  rig.dialog->Choose(kSlotList, 3);
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.9");
  rig.Close();
  EXPECT_EQ(rig.state.exportControl, nullptr);
  EXPECT_EQ(rig.state.uiHandler, nullptr);
  EXPECT_EQ(rig.state.exportListener, nullptr);
  EXPECT_FALSE(rig.state.switcherAddress);
  rig.Open();
  EXPECT_EQ(rig.state.switcherAddress.View(), u"10.0.0.9");
  EXPECT_EQ(rig.state.stillIndex, 3);
}

TEST_F(Dialog, IgnoresASecondClose) {
  rig.Open();
  rig.Close();
  EXPECT_EQ(rig.dialog->Send(kWmClose, 0, 0), 1);
  EXPECT_EQ(rig.dialog->Send(kWmApp, 0, 0), 1);
  EXPECT_EQ(rig.preferences.values.at(kAddressPreference).bytes.size(), 28U);
}

TEST_F(Dialog, ConnectsAgainAfterClosingDuringAConnect) {
  rig.Open();
  ASSERT_TRUE(rig.script.WaitForConnects(1));
  rig.Close();
  rig.Open();
  EXPECT_TRUE(rig.script.WaitForConnects(2));
}

TEST_F(Dialog, KeepsChoicesWhileTheModuleStaysLoaded) {
  rig.OpenConnected();
  rig.dialog->Click(kMediaPlayer4Radio);
  rig.dialog->Click(kPremultiplyCheck);
  rig.Close();
  rig.Open();
  EXPECT_TRUE(rig.dialog->Control(kMediaPlayer4Radio).checked);
  EXPECT_FALSE(rig.dialog->Control(kPremultiplyCheck).checked);
}

TEST_F(Dialog, ClosesWhileAResultIsOnItsWay) {
  for (int i = 0; i < 200; ++i) {
    rig.Open();
    rig.PostConnected(20, 4);
    rig.Close();
  }
}

// Results while the dialog runs

TEST_F(Dialog, ClosesAfterASuccessfulExport) {
  rig.OpenConnected();
  rig.dialog->Click(kExportButton);
  rig.state.exportControl->PostExportFinished(true);
  rig.HandleUntilEnd();
  EXPECT_FALSE(rig.dialog->HasTimer(kExportTimer));
}

TEST_F(Dialog, WorksAgainAfterAFailedExport) {
  rig.OpenConnected();
  rig.dialog->Click(kExportButton);
  rig.dialog->Send(kWmTimer, kExportTimer, 0);
  rig.state.exportControl->PostExportFinished(false);
  rig.HandleUntil([&] { return !rig.dialog->HasTimer(kExportTimer); });
  EXPECT_TRUE(rig.DisabledControls().empty());
  EXPECT_EQ(rig.dialog->Caption(), u"ORVA Switcher Media Pool");
  EXPECT_EQ(rig.dialog->Control(kStatusLine).text, u"");
}

TEST_F(Dialog, ConnectsAgainAfterADisconnectDuringAnExport) {
  rig.OpenConnected();
  rig.dialog->Click(kExportButton);
  rig.dialog->Send(kWmTimer, kExportTimer, 0);
  rig.state.exportControl->PostDisconnected();
  rig.HandleUntil([&] { return rig.state.connectInProgress; });
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress()) << "the address can be corrected";
  EXPECT_EQ(rig.dialog->Control(kStatusLine).text, u"");
  EXPECT_FALSE(rig.dialog->HasTimer(kExportTimer));
  EXPECT_TRUE(rig.script.WaitForConnects(2));
}

TEST_F(Dialog, TriesAgainUntilItConnects) {
  rig.Open();
  for (std::size_t attempt = 1; attempt <= 5; ++attempt) {
    ASSERT_TRUE(rig.script.WaitForConnects(attempt));
    rig.PostNotConnected(0);
    rig.HandleUntil([&] { return rig.script.Addresses().size() > attempt; });
    EXPECT_EQ(rig.dialog->Caption(), u"No communication");
  }
}

TEST_F(DialogWithBoxes, TellsOfFirmwareOnceAndStops) {
  rig.Open();
  ASSERT_TRUE(rig.script.WaitForConnects(1));
  rig.PostNotConnected(kFirmware);
  const auto boxes = testing::AnswerBoxes([&] { rig.HandleUntilConnectResult(); });
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0],
            (ShownBox{"Please connect the switcher via USB and run the ORVA Switcher Utility",
                      "ORVA Switcher software update required", true}));
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress());
  EXPECT_FALSE(rig.state.connectInProgress);
  EXPECT_FALSE(rig.state.connectPending);
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.1");
  EXPECT_TRUE(rig.script.WaitForConnects(2)) << "another address is tried";
}

TEST_F(DialogWithBoxes, ClosesUnderTheFirmwareBox) {
  rig.Open();
  ASSERT_TRUE(rig.script.WaitForConnects(1));
  rig.PostNotConnected(kFirmware);
  testing::AnswerBoxes([&] { rig.HandleUntilConnectResult(); },
                       [&] { rig.dialog->Send(kWmClose, 0, 0); });
  EXPECT_EQ(rig.dialog->EndValue(), 0);
  EXPECT_EQ(rig.state.exportControl, nullptr);
}

TEST_F(DialogWithBoxes, ShowsAMessageAndClosesUnderIt) {
  rig.OpenConnected();
  rig.state.exportControl->PostMessageBox(u"Error", u"An error occured during export.");
  const auto boxes = testing::AnswerBoxes([&] { rig.HandleUntilEnd(); }, [&] { rig.Close(); });
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0], (ShownBox{"An error occured during export.", "Error", true}));
}

}  // namespace
}  // namespace mixdecks
