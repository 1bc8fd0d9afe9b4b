// The export dialog's decisions before an export: messages and their results, opening, address,
// choices.
#include <array>

#include "dialog/preferences.h"
#include "dialog/text_conversion.h"
#include "tests/dialog/dialog_fixture.h"
#include "transfer/image_scaler.h"

namespace mixdecks {
namespace {

using testing::AllButTheAddress;
using testing::Dialog;
using testing::DialogWithBoxes;
using testing::ShownBox;

constexpr std::uint32_t kBlack = 0;
constexpr std::uint32_t kRed = 0x0000FF;

bool CanScale() {
  constexpr std::array<std::uint8_t, 4> source{};
  std::array<std::uint8_t, 16> destination{};
  return DrawScaledImage(source.data(), 1, 1, destination.data(), 2, 2, {0, 0, 2, 2});
}

// Opening

TEST_F(Dialog, OpensWithoutCommunicationAndConnects) {
  rig.Open();
  EXPECT_EQ(rig.dialog->Caption(), u"No communication");
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress());
  EXPECT_TRUE(rig.dialog->Control(kSlotList).items.empty());
  EXPECT_EQ(rig.dialog->Control(kStatusLine).text, u"");
  ASSERT_TRUE(rig.script.WaitForConnects(1));
  EXPECT_EQ(rig.script.Addresses()[0], kDefaultAddress);
  EXPECT_TRUE(rig.state.connectInProgress);
  EXPECT_FALSE(rig.state.connectPending);
}

TEST_F(Dialog, OpensWithFieldsFilled) {
  rig.state.premultiplyAlpha = false;
  rig.state.afterExportChoice = 3;
  rig.Open();
  EXPECT_EQ(rig.dialog->Control(kAddressEdit).text, kDefaultAddress);
  EXPECT_EQ(rig.dialog->Control(kNameEdit).text, u"Lower third");
  EXPECT_FALSE(rig.dialog->Control(kPremultiplyCheck).checked);
  EXPECT_TRUE(rig.dialog->Control(kMediaPlayer3Radio).checked);
  EXPECT_FALSE(rig.dialog->Control(kDoNothingRadio).checked);
}

TEST_F(Dialog, ChecksAlphaAndNothingInAFreshModule) {
  rig.Open();
  EXPECT_TRUE(rig.dialog->Control(kPremultiplyCheck).checked);
  EXPECT_TRUE(rig.dialog->Control(kDoNothingRadio).checked);
}

TEST_F(Dialog, OpensOverTheMiddle) {
  rig.Open();
  EXPECT_EQ(rig.dialog->left, ((1920 - rig.dialog->placement.width) >> 1) - 24);
  EXPECT_EQ(rig.dialog->top, (1080 - rig.dialog->placement.height) / 3);
}

TEST_F(Dialog, OpensOverAHostOnTheScreenToTheLeft) {
  rig.placement = DialogPlacement{.parentLeft = -1920,
                                  .parentTop = -200,
                                  .parentRight = -920,
                                  .parentBottom = 400,
                                  .width = 400,
                                  .height = 300,
                                  .captionButtonWidth = 18,
                                  .screenWidth = 1920,
                                  .screenHeight = 1080};
  rig.Open();
  EXPECT_EQ(rig.dialog->left, -1920 + 300 - 12);
  EXPECT_EQ(rig.dialog->top, -200 + 100);
}

TEST_F(Dialog, ProposesANameForAnyDocument) {
  struct {
    std::string fileName;
    std::u16string stillName;
  } const cases[] = {{"", u""},
                     {"no dot", u"no dot"},
                     {".psd", u""},
                     {"C:\\a.b\\Lower third.v2.psd", u"Lower third"},
                     {"C:\\" + std::string(240, 'd') + "\\name.psd", u"name"},
                     {std::string(254, 'x'), std::u16string(254, u'x')},
                     {std::string(255, 'x'), std::u16string(254, u'x')},
                     {std::string(250, 'x') + ".psd", std::u16string(250, u'x')},
                     {std::string(251, 'x') + ".psd", std::u16string(251, u'x')}};
  for (const auto& each : cases) {
    rig.SetFileName(each.fileName);
    rig.Open();
    EXPECT_EQ(rig.dialog->Control(kNameEdit).text, each.stillName) << each.fileName;
    rig.Close();
  }
}

TEST_F(Dialog, MasksAndLimitsTheAddress) {
  rig.Open();
  rig.dialog->Type(kAddressEdit, std::u16string(20, u'\b'));
  rig.dialog->Type(kAddressEdit, u"1 0.x0.0.12345678901234");
  EXPECT_EQ(rig.dialog->Control(kAddressEdit).text, u"10.0.0.12345678");
  rig.dialog->Type(kNameEdit, u" any text");
  EXPECT_EQ(rig.dialog->Control(kNameEdit).mask, std::nullopt);
}

TEST_F(Dialog, ReadiesTheScalerWhileItIsOpen) {
  EXPECT_FALSE(CanScale());
  rig.Open();
  EXPECT_TRUE(CanScale());
  rig.Close();
  EXPECT_FALSE(CanScale());
}

TEST_F(Dialog, OpensRedOnAMalformedAddress) {
  rig.state.switcherAddress = Text(u"1.2.3");
  SavePreferences(rig.preferences, rig.state);
  rig.Open();
  EXPECT_EQ(rig.dialog->TextColour(kAddressEdit), kRed);
  EXPECT_FALSE(rig.state.connectInProgress);
  rig.Close();
  EXPECT_TRUE(rig.script.Addresses().empty());
}

TEST_F(DialogWithBoxes, EndsWithoutTheService) {
  rig.script.serviceMissing = true;
  const auto boxes = testing::AnswerBoxes([&] { rig.Open(); });
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0], (ShownBox{"Your Mixdecks installation is missing some components, please try "
                                "re-installing the Tollenmark ORVA Software.",
                                "Corrupt Installation Detected", true}));
  EXPECT_EQ(rig.dialog->EndValue(), 0);
  EXPECT_FALSE(CanScale());
  EXPECT_TRUE(rig.dialog->Control(kNameEdit).text.empty()) << "nothing was filled in";
}

TEST_F(Dialog, GoesOnWithoutAControl) {
  rig.script.noSwitcherSide = true;
  rig.Open();
  EXPECT_EQ(rig.dialog->EndValue(), std::nullopt);
  EXPECT_EQ(rig.dialog->Caption(), u"No communication");
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress());
  EXPECT_EQ(rig.dialog->Send(kWmApp, 0, 0), 1);
  rig.dialog->PasteOver(kAddressEdit, u"1.2.3.4");
  EXPECT_TRUE(rig.state.connectPending);
  EXPECT_EQ(rig.Command(kExportButton), 1);
  EXPECT_FALSE(rig.dialog->HasTimer(kExportTimer));
  rig.Close();
}

// Messages

TEST_F(Dialog, AnswersItsMessages) {
  rig.Open();
  EXPECT_EQ(rig.dialog->Send(kWmApp, 0, 0), 1);
  EXPECT_EQ(rig.dialog->Send(kWmTimer, 99, 0), 1);
  EXPECT_EQ(rig.dialog->Send(kWmChar, 'a', 0), 1);
  EXPECT_EQ(rig.dialog->Send(kWmChar, 13, 0), 1);
  EXPECT_EQ(rig.dialog->Send(kWmLeftButtonDown, 0, 0), 0);
  EXPECT_EQ(rig.dialog->Send(kWmNcDestroy, 0, 0), 0);
  for (const int control :
       {kAddressEdit, kSlotList, kDoNothingRadio, kMediaPlayer1Radio, kMediaPlayer2Radio,
        kMediaPlayer3Radio, kMediaPlayer4Radio, kPremultiplyCheck}) {
    EXPECT_EQ(rig.Command(control), 1) << control;
  }
  for (const int control : {kOkCommand, kNameEdit, kStatusLine, kBanner, 0, 4711}) {
    EXPECT_EQ(rig.Command(control), 0) << control;
  }
  EXPECT_EQ(rig.dialog->EndValue(), std::nullopt);
}

TEST_F(Dialog, ClosesAtEscapeAndAtTheCloseMessage) {
  for (const auto& [message, key] : {std::pair{kWmChar, 27U}, std::pair{kWmClose, 0U}}) {
    rig.Open();
    EXPECT_EQ(rig.dialog->Send(message, key, 0), 1);
    EXPECT_EQ(rig.dialog->EndValue(), 0);
    EXPECT_EQ(rig.state.exportControl, nullptr);
  }
}

TEST_F(Dialog, TakesAnotherEditsDeviceContextForACommand) {
  rig.Open();
  EXPECT_EQ(rig.dialog->Send(kWmCtlColorEdit, 0x12340000, kNameEdit), 0);
  EXPECT_EQ(rig.dialog->TextColour(kNameEdit), std::nullopt);
  rig.state.premultiplyAlpha = false;
  EXPECT_EQ(rig.dialog->Send(kWmCtlColorEdit, 0x12340000 | kPremultiplyCheck, kNameEdit), 1);
  EXPECT_TRUE(rig.state.premultiplyAlpha) << "read back from the check box";
}

// Address

TEST_F(Dialog, TurnsRedAndBlackWithTheAddress) {
  rig.Open();
  EXPECT_EQ(rig.dialog->TextColour(kAddressEdit), kBlack);
  EXPECT_EQ(rig.dialog->Control(kAddressEdit).redraws, 0);
  for (const char16_t* text : {u"", u"1.2.3", u"1.2.3.4.5", u"1.2.3.a", u"255.255.255.255"}) {
    rig.dialog->PasteOver(kAddressEdit, text);
    EXPECT_EQ(rig.dialog->TextColour(kAddressEdit), kRed) << NarrowText(text);
  }
  EXPECT_EQ(rig.dialog->Control(kAddressEdit).redraws, 1) << "once for a change of the verdict";
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.1");
  EXPECT_EQ(rig.dialog->TextColour(kAddressEdit), kBlack);
  EXPECT_EQ(rig.dialog->Control(kAddressEdit).redraws, 2);
}

TEST_F(Dialog, ValidatesOnlyWhenTheAddressChanged) {
  rig.OpenConnected();
  EXPECT_EQ(rig.Command(kAddressEdit, 256), 1);
  EXPECT_EQ(rig.Command(kAddressEdit, 512), 1);
  EXPECT_FALSE(rig.state.connectInProgress);
  EXPECT_EQ(rig.Command(kAddressEdit, kEnChange), 1);
  EXPECT_TRUE(rig.state.connectInProgress);
}

TEST_F(Dialog, ReadsNoMoreThanItsBuffer) {
  rig.Open();
  const std::u16string text(300, u'1');
  rig.dialog->SendToControl(kAddressEdit, kWmSetText, 0,
                            reinterpret_cast<std::intptr_t>(text.c_str()));
  EXPECT_EQ(rig.dialog->TextColour(kAddressEdit), kRed);
}

TEST_F(Dialog, DisconnectsTheViewOnAMalformedAddress) {
  rig.OpenConnected();
  EXPECT_TRUE(rig.DisabledControls().empty());
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0");
  EXPECT_EQ(rig.dialog->Caption(), u"No communication");
  EXPECT_EQ(rig.DisabledControls(), AllButTheAddress());
  EXPECT_EQ(rig.state.switcherAddress.View(), kDefaultAddress) << "the last valid one";
}

TEST_F(Dialog, ConnectsAnewAtAnotherAddress) {
  rig.OpenConnected();
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.1");
  EXPECT_EQ(rig.dialog->Caption(), u"No communication");
  ASSERT_TRUE(rig.script.WaitForConnects(2));
  EXPECT_EQ(rig.script.Addresses()[1], u"10.0.0.1");
}

TEST_F(Dialog, KeepsAnotherAddressUntilTheConnectHasItsResult) {
  rig.Open();
  ASSERT_TRUE(rig.script.WaitForConnects(1));
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.1");
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.2");
  EXPECT_TRUE(rig.state.connectPending);
  EXPECT_EQ(rig.script.Addresses().size(), 1U);
  rig.PostConnected(20, 4);
  rig.HandleUntil([&] { return !rig.state.connectPending; });
  ASSERT_TRUE(rig.script.WaitForConnects(2));
  EXPECT_EQ(rig.script.Addresses()[1], u"10.0.0.2");
  EXPECT_TRUE(rig.state.connectInProgress);
  EXPECT_EQ(rig.dialog->Caption(), u"No communication");
}

TEST_F(Dialog, ForgetsAWaitingAddressThatIsSpoilt) {
  rig.Open();
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.1");
  EXPECT_TRUE(rig.state.connectPending);
  rig.dialog->PasteOver(kAddressEdit, u"10.0.0.");
  EXPECT_FALSE(rig.state.connectPending);
}

// Choices

TEST_F(Dialog, ReadsTheChoicesBack) {
  rig.OpenConnected();
  constexpr int kRadios[] = {1012, 1013, 1014, 1021, 1022};
  for (const std::uint32_t choice : {4U, 3U, 2U, 1U, 0U}) {
    rig.dialog->Click(kRadios[choice]);
    EXPECT_EQ(rig.state.afterExportChoice, choice);
  }
  rig.dialog->Click(kPremultiplyCheck);
  EXPECT_FALSE(rig.state.premultiplyAlpha);
  rig.dialog->Click(kPremultiplyCheck);
  EXPECT_TRUE(rig.state.premultiplyAlpha);
  rig.Command(kPremultiplyCheck, 6);
  EXPECT_TRUE(rig.state.premultiplyAlpha) << "read anew at whatever is reported, not turned";
}

TEST_F(Dialog, KeepsTheChoiceWhenNoRadioIsChecked) {
  rig.state.afterExportChoice = 2;
  rig.Open();
  rig.dialog->SendToControl(kMediaPlayer2Radio, kBmSetCheck, 0, 0);
  rig.Command(kMediaPlayer1Radio);
  EXPECT_EQ(rig.state.afterExportChoice, 2U);
}

TEST_F(Dialog, ReadsTheSlotAtEveryNotification) {
  rig.OpenConnected();
  rig.dialog->Choose(kSlotList, 5);
  EXPECT_EQ(rig.state.stillIndex, 5);
  rig.dialog->SendToControl(kSlotList, kCbSetCurSel, ~std::uintptr_t{0}, 0);
  rig.Command(kSlotList, 4);
  EXPECT_EQ(rig.state.stillIndex, -1);
}

}  // namespace
}  // namespace mixdecks
