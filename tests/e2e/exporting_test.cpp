// The export itself, from the press of the button to the frame in the pool.
#include "dialog/window_messages.h"
#include "platform/four_character_code.h"
#include "tests/e2e/host_window.h"
#include "tests/e2e/plugin_fixture.h"
#include "tests/e2e/wait_for.h"

namespace mixdecks::e2e {
namespace {

using simulator::Action;
using simulator::Point;
using simulator::ScriptStep;

constexpr std::int32_t kWidth = 1920;
constexpr std::int32_t kHeight = 1080;

class Exporting : public PluginTest {};

void PressExport(DialogDriver& dialog) {
  ASSERT_TRUE(dialog.WaitUntilConnected());
  dialog.Press(kExportButton);
}

void ExportAndClose(DialogDriver& dialog) {
  PressExport(dialog);
  dialog.WaitUntilClosed();
}

struct ExportCase {
  bool withAlpha;
  bool premultiply;
};

class UnscaledExport : public PluginTest, public ::testing::WithParamInterface<ExportCase> {};

TEST_P(UnscaledExport, IsTheReferencesFrame) {
  const auto [withAlpha, premultiply] = GetParam();
  const Picture picture = BusyPicture(kWidth, kHeight);
  Session session({}, DocumentOf(picture, withAlpha));
  const std::int16_t result = session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.ChooseSlot(11);
    dialog.PasteOver(kNameEdit, u"Title \u00E9 \xD83D\xDE00");
    if (!premultiply) {
      dialog.Press(kPremultiplyCheck);
      dialog.WaitUntil("the check goes", [&] { return !dialog.IsChecked(kPremultiplyCheck); });
    }
    dialog.Press(kExportButton);
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
  const simulator::Still still = StillIn(session.simulator, 11);
  EXPECT_EQ(still.name, u"Title \u00E9 \xD83D\xDE00");
  EXPECT_TRUE(session.simulator.Frame(11) == ExpectedFrame(picture, withAlpha, premultiply));
  const HostRect16& rectangle = session.host.Record().imageRect;
  EXPECT_EQ(rectangle.top | rectangle.left | rectangle.bottom | rectangle.right, 0);
  for (const auto& player : session.simulator.Contents().players)
    EXPECT_EQ(player, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, UnscaledExport,
                         ::testing::Values(ExportCase{false, true}, ExportCase{false, false},
                                           ExportCase{true, true}, ExportCase{true, false}));

/// A scaled smooth picture differs by no more than this from the source's nearest pixel.
constexpr int kScalerTolerance = 14;

void ExpectSmoothFrame(const std::vector<std::uint8_t>& frame, const Picture& source,
                       const RECT& place, bool withAlpha) {
  ASSERT_EQ(frame.size(), static_cast<std::size_t>(kWidth) * kHeight * 4);
  const std::vector<std::uint8_t> unscaled = ExpectedFrame(source, withAlpha, false);
  const double stepX = static_cast<double>(source.width) / (place.right - place.left);
  const double stepY = static_cast<double>(source.height) / (place.bottom - place.top);
  for (std::int32_t y = place.top + 8; y < place.bottom - 8; y += 7) {
    for (std::int32_t x = place.left + 8; x < place.right - 8; x += 13) {
      // Chroma is one component on even pixels, another on odd ones.
      const auto nearestX = static_cast<std::int32_t>((x - place.left + 0.5) * stepX);
      const std::int32_t sourceX = (nearestX & ~1) | (x & 1);
      const auto sourceY = static_cast<std::int32_t>((y - place.top + 0.5) * stepY);
      const FramePixel is = PixelAt(frame, kWidth, x, y);
      const FramePixel was = PixelAt(unscaled, source.width, sourceX, sourceY);
      ASSERT_NEAR(is.luma, was.luma, kScalerTolerance) << x << ", " << y;
      ASSERT_NEAR(is.chroma, was.chroma, kScalerTolerance) << x << ", " << y;
      ASSERT_NEAR(is.alpha, was.alpha, kScalerTolerance) << x << ", " << y;
    }
  }
}

void ExpectMargin(const std::vector<std::uint8_t>& frame, std::int32_t x, std::int32_t y,
                  bool withAlpha) {
  const FramePixel pixel = PixelAt(frame, kWidth, x, y);
  EXPECT_EQ(pixel.luma, 64) << x << ", " << y;
  EXPECT_EQ(pixel.chroma, 512) << x << ", " << y;
  EXPECT_EQ(pixel.alpha, withAlpha ? 64 : 940) << x << ", " << y;
}

class ScaledExport : public PluginTest, public ::testing::WithParamInterface<bool> {};

TEST_P(ScaledExport, FitsASmallPicture) {
  const bool withAlpha = GetParam();
  const Picture picture = SmoothPicture(1000, 500);
  Session session({}, DocumentOf(picture, withAlpha));
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.Press(kPremultiplyCheck);
    dialog.Press(kExportButton);
    dialog.WaitUntilClosed();
  });
  const std::vector<std::uint8_t> frame = session.simulator.Frame(0);
  ExpectSmoothFrame(frame, picture, {0, 60, 1920, 1020}, withAlpha);
  ExpectMargin(frame, 0, 0, withAlpha);
  ExpectMargin(frame, 960, 58, withAlpha);
  ExpectMargin(frame, 1919, 1021, withAlpha);
}

TEST_P(ScaledExport, FitsALargePicture) {
  const bool withAlpha = GetParam();
  const Picture picture = SmoothPicture(2400, 2160);
  Session session({}, DocumentOf(picture, withAlpha));
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.Press(kPremultiplyCheck);
    dialog.Press(kExportButton);
    dialog.WaitUntilClosed();
  });
  const std::vector<std::uint8_t> frame = session.simulator.Frame(0);
  ExpectSmoothFrame(frame, picture, {360, 0, 1560, 1080}, withAlpha);
  ExpectMargin(frame, 358, 500, withAlpha);
  ExpectMargin(frame, 1562, 500, withAlpha);
}

TEST_P(ScaledExport, IsPremultipliedAfterwards) {
  const Picture picture = SmoothPicture(1000, 500);
  Session session({}, DocumentOf(picture, GetParam()));
  session.Start(ExportAndClose);
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    dialog.ChooseSlot(1);
    dialog.Press(kPremultiplyCheck);
    dialog.Press(kExportButton);
    dialog.WaitUntilClosed();
  });
  EXPECT_TRUE(session.simulator.Frame(0) == Premultiplied(session.simulator.Frame(1)));
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutAlpha, ScaledExport, ::testing::Bool());

TEST_F(Exporting, FollowsTheSwitchersVideoMode) {
  const Picture picture = BusyPicture(720, 576);
  simulator::Scenario scenario;
  scenario.mode = FourCharacterCode("pall");
  Session session(scenario, DocumentOf(picture, false));
  session.Start(ExportAndClose);
  EXPECT_TRUE(session.simulator.Frame(0) == ExpectedFrame(picture, false, true, kRec601));
}

/// It fills a square in the middle with its colour.
TEST_F(Exporting, TakesThePictureOfOnePixel) {
  const Picture pixel{1, 1, {200, 40, 90, 255}};
  const Picture pair{2, 1, {200, 40, 90, 255, 200, 40, 90, 255}};
  const std::vector<std::uint8_t> expected = ExpectedFrame(pair, false, false);
  Session session({}, DocumentOf(pixel, false));
  session.Start(ExportAndClose);
  const std::vector<std::uint8_t> frame = session.simulator.Frame(0);
  ASSERT_EQ(frame.size(), static_cast<std::size_t>(kWidth) * kHeight * 4);
  for (const std::int32_t x : {960, 961}) {
    const FramePixel is = PixelAt(frame, kWidth, x, 540);
    const FramePixel was = PixelAt(expected, 2, x & 1, 0);
    EXPECT_NEAR(is.luma, was.luma, kScalerTolerance) << x;
    EXPECT_NEAR(is.chroma, was.chroma, kScalerTolerance) << x;
    EXPECT_EQ(is.alpha, 940) << x;
  }
  ExpectMargin(frame, 418, 540, false);
  ExpectMargin(frame, 1502, 540, false);
}

/// The reader refuses it before it asks for memory or pixels.
TEST_F(Exporting, StaysLockedWhenTheDocumentIsTooLarge) {
  HostDocument document{.width = 30000, .height = 20000};
  HostChannel channel;
  channel.bounds = {0, 0, document.height, document.width};
  document.composite.assign(3, channel);
  Session session({}, std::move(document));
  const std::int16_t result = session.Start([](DialogDriver& dialog) {
    PressExport(dialog);
    dialog.WaitUntil("the status changes",
                     [&] { return dialog.Text(kStatusLine) == u"Exporting.."; });
    EXPECT_FALSE(dialog.IsEnabled(kExportButton));
    EXPECT_TRUE(dialog.IsEnabled(kCloseButton));
    dialog.PressClose();
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
  EXPECT_EQ(session.host.Calls(HostCall::kReadPixels), 0);
}

TEST_F(Exporting, BeginsAtTheReturnKey) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    PostMessageW(dialog.Control(kNameEdit), WM_KEYDOWN, VK_RETURN, 1);
    dialog.WaitUntilClosed();
  });
  StillIn(session.simulator, 0);
}

TEST_F(Exporting, PutsTheStillOnEachPlayer) {
  constexpr int kRadios[] = {1013, 1014, 1021, 1022};
  for (std::size_t player = 0; player < 4; ++player) {
    Session session;
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      dialog.ChooseSlot(3);
      dialog.Press(kRadios[player]);
      dialog.WaitUntil("the radio is checked", [&] { return dialog.IsChecked(kRadios[player]); });
      dialog.Press(kExportButton);
      dialog.WaitUntilClosed();
    });
    const simulator::PoolContents contents = session.simulator.Contents();
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(contents.players[i], i == player ? std::optional(3U) : std::nullopt) << i;
    }
  }
}

/// The choice survives while the library stays loaded, whichever switcher comes next.
TEST_F(Exporting, PutsNoStillOnAPlayerThatIsNotThere) {
  const HMODULE kept = LoadLibraryW(kPluginFile);
  {
    Session session;
    session.Start([](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      dialog.Press(kMediaPlayer4Radio);
      dialog.WaitUntil("the radio is checked",
                       [&] { return dialog.IsChecked(kMediaPlayer4Radio); });
    });
  }
  {
    simulator::Scenario scenario;
    scenario.players = 1;
    Session session(scenario);
    session.Start([](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      EXPECT_TRUE(dialog.IsChecked(kMediaPlayer4Radio));
      EXPECT_FALSE(dialog.IsEnabled(kMediaPlayer4Radio));
      dialog.Press(kExportButton);
      dialog.WaitUntilClosed();
    });
    StillIn(session.simulator, 0);
    EXPECT_EQ(session.simulator.Contents().players.at(0), std::nullopt);
  }
  FreeLibrary(kept);
}

TEST_F(Exporting, AnimatesAndLocksTheDialogMeanwhile) {
  Session session;
  std::atomic<bool> goOn = false;
  session.simulator.SetPointHook(Point::kUploadHalfway,
                                 [&](const auto&) { WaitFor([&] { return goOn.load(); }); });
  session.Start([&](DialogDriver& dialog) {
    PressExport(dialog);
    for (const char16_t* text : {u"Exporting..", u"Exporting...", u"Exporting."}) {
      dialog.WaitUntil("the status changes", [&] { return dialog.Text(kStatusLine) == text; });
    }
    EXPECT_EQ(dialog.DisabledControls(),
              (std::vector<int>{1007, 1010, 1012, 1013, 1014, 1015, 1018, 1020, 1021, 1022}));
    EXPECT_TRUE(dialog.IsEnabled(kCloseButton));
    goOn = true;
    dialog.WaitUntilClosed();
  });
  StillIn(session.simulator, 0);
}

TEST_F(Exporting, SendsTheNameAsItStands) {
  const std::u16string names[] = {u"",
                                  u"x",
                                  u"\xD83D\xDE00\xD83D\xDE00",
                                  u"a\tb",
                                  std::u16string(254, u'n'),
                                  std::u16string(255, u'n'),
                                  std::u16string(256, u'n'),
                                  std::u16string(300, u'n'),
                                  std::u16string(253, u'n') + u"\xD83D\xDE00"};
  for (const std::u16string& name : names) {
    Session session;
    session.Start([&](DialogDriver& dialog) {
      ASSERT_TRUE(dialog.WaitUntilConnected());
      dialog.PasteOver(kNameEdit, name);
      dialog.Press(kExportButton);
      dialog.WaitUntilClosed();
    });
    EXPECT_EQ(StillIn(session.simulator, 0).name, name.substr(0, 254));
  }
}

TEST_F(Exporting, WorksAgainAfterAFailure) {
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = Point::kUploadHalfway, .action = Action::kFail},
                     ScriptStep{.at = Point::kUploadHalfway, .action = Action::kCancel, .call = 2}};
  Session session(scenario);
  session.Start([&](DialogDriver& dialog) {
    for (int attempt = 0; attempt < 2; ++attempt) {
      PressExport(dialog);
      dialog.WaitUntilExporting();
      dialog.WaitUntilUsable();
      EXPECT_EQ(dialog.Caption(), u"ORVA Switcher Media Pool");
      EXPECT_EQ(dialog.Text(kStatusLine), u"");
      EXPECT_TRUE(dialog.DisabledControls().empty());
    }
    ExportAndClose(dialog);
  });
  StillIn(session.simulator, 0);
}

struct FailingStep {
  Point point;
  std::uint32_t call;
  const char* text;
};

class FailingExport : public PluginTest, public ::testing::WithParamInterface<FailingStep> {};

TEST_P(FailingExport, TellsWhyAndWorksAgain) {
  const FailingStep& step = GetParam();
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = step.point, .action = Action::kFail, .call = step.call}};
  Session session(scenario);
  const HostWindow host(100, 50, 1000, 800);
  session.host.SetParentWindow(host.Get());
  session.Start([&](DialogDriver& dialog) {
    PressExport(dialog);
    if (step.text != nullptr) ExpectBox(dialog, host.Get(), "Error", step.text);
    dialog.WaitUntilUsable();
    ExportAndClose(dialog);
  });
  StillIn(session.simulator, 0);
}

constexpr char kFormatText[] =
    "Unable to export an image of this format. RGB 8/16 Bit Required. Resize the image to be less "
    "than or equal to the current switcher resolution";
constexpr char kExportText[] = "An error occured during export.";

INSTANTIATE_TEST_SUITE_P(EachStep, FailingExport,
                         ::testing::Values(FailingStep{Point::kGetVideoMode, 1, kFormatText},
                                           FailingStep{Point::kGetVideoMode, 2, kFormatText},
                                           FailingStep{Point::kCreateFrame, 1, kExportText},
                                           FailingStep{Point::kGetBytes, 1, kExportText},
                                           FailingStep{Point::kLock, 1, nullptr}));

TEST_F(Exporting, TellsWhyWithoutAPlatformRecord) {
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = Point::kCreateFrame, .action = Action::kFail}};
  Session session(scenario);
  session.host.Record().platform = nullptr;
  session.Start([](DialogDriver& dialog) {
    PressExport(dialog);
    ExpectBox(dialog, nullptr, "Error", kExportText);
    dialog.WaitUntilUsable();
  });
}

TEST_F(Exporting, RefusesSlotMinusOneAndWorksAgain) {
  WritePreference(L"StillIndex", NumberValue(0xFFFFFFFF));
  Session session;
  // The slot goes to the switcher as it is, which refuses it.
  session.expectedViolations = {"Lock: slot index 4294967295 of 20 slots"};
  session.Start([&](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    EXPECT_EQ(dialog.SelectedSlot(), -1);
    dialog.Press(kExportButton);
    dialog.WaitUntilExporting();
    dialog.WaitUntilUsable();
  });
  EXPECT_EQ(ReadPreference(L"StillIndex"), NumberValue(0xFFFFFFFF));
}

TEST_F(Exporting, ConnectsAgainAfterADisconnectInTheMiddle) {
  simulator::Scenario scenario;
  scenario.script = {ScriptStep{.at = Point::kUploadHalfway, .action = Action::kDisconnect}};
  Session session(scenario);
  session.Start([&](DialogDriver& dialog) {
    PressExport(dialog);
    dialog.WaitUntilExporting();
    dialog.WaitUntilUsable();
    EXPECT_TRUE(dialog.IsEnabled(kAddressEdit));
    EXPECT_EQ(dialog.Text(kStatusLine), u"");
    ExportAndClose(dialog);
  });
  StillIn(session.simulator, 0);
}

TEST_F(Exporting, StaysLockedWhenTheDocumentCannotBeRead) {
  Session session;
  session.host.RemoveSuite();
  const std::int16_t result = session.Start([&](DialogDriver& dialog) {
    PressExport(dialog);
    dialog.WaitUntil("the status changes",
                     [&] { return dialog.Text(kStatusLine) == u"Exporting.."; });
    EXPECT_FALSE(dialog.IsEnabled(kExportButton));
    dialog.PressClose();
    dialog.WaitUntilClosed();
  });
  EXPECT_EQ(result, kHostResultDone);
}

}  // namespace
}  // namespace mixdecks::e2e
