// Exports from the click to the last byte, with everything that can go wrong on the way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"
#include "tests/transfer/latch.h"
#include "transfer/image_scaler.h"
#include "transfer/transfer_error.h"

namespace mixdecks {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr char kNoMemory[] =
    "Error: There is not enough memory available to run ORVA Switcher Media Pool";
constexpr char kStepFailed[] = "Error: An error occured during export.";
constexpr char kWrongMode[] =
    "Error: Unable to export an image of this format. RGB 8/16 Bit Required. Resize the image to "
    "be less than or equal to the current switcher resolution";

TestDocument Document(std::int16_t width, std::int16_t height, bool hasAlpha) {
  TestDocument document{width, height, hasAlpha, {}};
  document.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  for (std::size_t i = 0; i < document.pixels.size(); ++i) {
    document.pixels[i] = static_cast<std::uint8_t>(i * 37 + i / 1000);
  }
  return document;
}

/// A front end that is connected to a switcher in a small mode and has a document open.
class Exporting : public testing::Test {
 protected:
  Exporting() {
    service_.videoMode = FourCharacterCode("ntsc");
    StartImageScaler();
    frontEnd_.Connect(3);
    frontEnd_.Open(Document(720, 486, true));
  }
  ~Exporting() override {
    frontEnd_.Close();
    StopImageScaler();
  }

  void ExportUpToTheUpload(std::int32_t mediaPlayer = -1) {
    const int uploads = service_.Count(Call::kSetPicture);
    ExportUpToTheLock(mediaPlayer);
    service_.GrantLock();
    EXPECT_EQ(service_.Count(Call::kSetPicture), uploads + 1);
  }
  void ExportUpToTheLock(std::int32_t mediaPlayer = -1) {
    const int locks = service_.Count(Call::kLock);
    frontEnd_.Export(u"Title", 1, false, mediaPlayer);
    service_.WaitFor(Call::kLock, locks + 1);
  }
  /// Everything told since the connecting.
  std::vector<std::string> Told() const {
    return {frontEnd_.Results().begin() + 4, frontEnd_.Results().end()};
  }

  FakeService service_;
  FrontEnd frontEnd_;
};

TEST_F(Exporting, UploadsAndTellsTheEnd) {
  ExportUpToTheUpload();
  ASSERT_EQ(service_.Pictures().size(), 1U);
  const FakePicture picture = service_.Pictures()[0];
  EXPECT_EQ(picture.slot, 1U);
  EXPECT_EQ(picture.name, u"Title");
  EXPECT_EQ(picture.format, 0x79757661U);
  EXPECT_EQ(picture.width, 720U);
  EXPECT_EQ(picture.height, 486U);
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  EXPECT_THAT(Told(), ElementsAre("exported"));
  EXPECT_EQ(service_.Count(Call::kUnlock), 1);
  EXPECT_THAT(service_.Sources(), IsEmpty());
  EXPECT_EQ(service_.Count(Call::kCreateIterator), 1);  // the one of the connecting
}

TEST_F(Exporting, ReleasesTheFrameAfterTheEnd) {
  ExportUpToTheUpload();
  EXPECT_EQ(service_.LiveObjects(), 5);
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(service_.LiveObjects(), 4);
  EXPECT_EQ(service_.Calls().back(), "end of frame");
}

TEST_F(Exporting, ShowsTheStillOnThePlayerBeforeItTells) {
  for (const std::int32_t player : {0, 1}) {
    ExportUpToTheUpload(player);
    service_.At(Call::kSetSource, [&, told = frontEnd_.Results().size()](int) {
      EXPECT_EQ(frontEnd_.Results().size(), told);
    });
    service_.SendStillsEvent(kEventTransferCompleted, 1);
    EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  }
  EXPECT_THAT(service_.Sources(), ElementsAre(Pair(0, 1U), Pair(1, 1U)));
}

TEST_F(Exporting, IsSilentAboutAPlayerThatIsNotThere) {
  for (const std::int32_t player : {2, 9, 0x7FFFFFFF}) {
    ExportUpToTheUpload(player);
    service_.SendStillsEvent(kEventTransferCompleted, 1);
    EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  }
  service_.Fail(Call::kSetSource);
  ExportUpToTheUpload(0);
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  service_.Fail(Call::kCreateIterator);
  ExportUpToTheUpload(0);
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  EXPECT_THAT(service_.Sources(), IsEmpty());
}

TEST_F(Exporting, SurvivesPlayersThatAreNotGiven) {
  service_.GiveNothing(Call::kNext);
  ExportUpToTheUpload(1);
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  service_.GiveNothing(Call::kCreateIterator);
  ExportUpToTheUpload(1);
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
}

TEST_F(Exporting, TellsAnUploadThatFailedOrWasCancelled) {
  for (const std::uint32_t event : {kEventTransferFailed, kEventTransferCancelled}) {
    const int unlocks = service_.Count(Call::kUnlock);
    ExportUpToTheUpload(0);
    service_.SendStillsEvent(event, 1);
    EXPECT_EQ(frontEnd_.TakeNext(), "not exported");
    EXPECT_EQ(service_.Count(Call::kUnlock), unlocks + 1);
  }
  EXPECT_THAT(service_.Sources(), IsEmpty());
  ExportUpToTheUpload();
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
}

struct FailingStep {
  Call call;
  int nth;
  std::vector<std::string> told;
};

class FailingExport : public Exporting, public testing::WithParamInterface<FailingStep> {};

TEST_P(FailingExport, IsToldAndTheNextOneWorks) {
  frontEnd_.Open(Document(100, 50, true));
  service_.Fail(GetParam().call, kResultFail, GetParam().nth);
  frontEnd_.Export();
  frontEnd_.TakeUntil(4 + GetParam().told.size());
  EXPECT_EQ(Told(), GetParam().told);
  EXPECT_THAT(service_.Pictures(), IsEmpty());

  ExportUpToTheUpload();
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
}

INSTANTIATE_TEST_SUITE_P(
    Steps, FailingExport,
    testing::Values(FailingStep{Call::kGetVideoMode, 1, {kWrongMode, "not exported"}},
                    FailingStep{Call::kGetVideoMode, 2, {kWrongMode, "not exported"}},
                    FailingStep{Call::kCreateFrame, 1, {kStepFailed, "not exported"}},
                    FailingStep{Call::kGetBytes, 1, {kStepFailed, "not exported"}},
                    // A lock that is refused has no message.
                    FailingStep{Call::kQueryStillsLock, 1, {"not exported"}},
                    FailingStep{Call::kLock, 1, {"not exported"}}));

TEST_F(Exporting, TellsAScalerThatIsNotStarted) {
  StopImageScaler();
  frontEnd_.Open(Document(100, 50, false));
  frontEnd_.Export();
  frontEnd_.TakeUntil(6);
  EXPECT_THAT(Told(), ElementsAre(kStepFailed, "not exported"));
  StartImageScaler();
}

TEST_F(Exporting, TakesAnyModeThatTheServiceTakes) {
  service_.videoMode = FourCharacterCode("8K50");
  ExportUpToTheUpload();
  EXPECT_EQ(service_.Pictures()[0].width, 1920U);
  EXPECT_EQ(service_.Pictures()[0].height, 1080U);
}

TEST_F(Exporting, AsksAfterAPositiveResultOfTheLock) {
  service_.Fail(Call::kLock, 1);  // any result that is not negative is a success
  ExportUpToTheUpload();
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
}

TEST_F(Exporting, FailsLikeAnUnreadableModeWhenTheSwitcherWent) {
  service_.SendSwitcherEvent(kEventDisconnected);
  frontEnd_.Export();
  frontEnd_.TakeUntil(7);
  EXPECT_THAT(Told(), ElementsAre("disconnected", kWrongMode, "not exported"));
}

TEST_F(Exporting, HasNoMessageWhenTheSwitcherWentBeforeTheLock) {
  ITMKSwitcherCallback* callback = service_.SwitcherCallbacks().front();
  service_.At(Call::kGetBytes, [=](int) { callback->Notify(kEventDisconnected); });
  frontEnd_.Export();
  frontEnd_.TakeUntil(6);
  EXPECT_THAT(Told(), ElementsAre("disconnected", "not exported"));
}

TEST_F(Exporting, ForgetsAnUploadWhenTheSwitcherGoes) {
  ExportUpToTheUpload(0);
  service_.SendSwitcherEvent(kEventDisconnected);
  EXPECT_EQ(frontEnd_.TakeNext(), "disconnected");
  EXPECT_EQ(service_.LiveObjects(), 2);  // the discovery and the frame, kept until the next export

  frontEnd_.Connect(3);
  ExportUpToTheUpload();
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd_.TakeNext(), "exported");
  EXPECT_EQ(service_.LiveObjects(), 4);
}

TEST_F(Exporting, ReleasesAForgottenFrameWhenItCloses) {
  ExportUpToTheUpload();
  service_.SendSwitcherEvent(kEventDisconnected);
  frontEnd_.Close();
  EXPECT_EQ(service_.LiveObjects(), 0);
}

TEST_F(Exporting, ClosesDuringAnUpload) {
  ExportUpToTheUpload();
  frontEnd_.Close();
  EXPECT_EQ(service_.LiveObjects(), 0);
  EXPECT_THAT(service_.StillsCallbacks(), IsEmpty());
}

// Whatever of the three comes first: nothing is left behind, and nobody waits for anybody.
TEST_F(Exporting, ClosesWhileCallbacksComeIn) {
  frontEnd_.Close();
  for (int round = 0; round < 50; ++round) {
    FrontEnd frontEnd;
    frontEnd.Connect(3);
    frontEnd.Open(Document(720, 486, true));
    const int locks = service_.Count(Call::kLock);
    frontEnd.Export(u"Title", 1, false, 0);
    service_.WaitFor(Call::kLock, locks + 1);
    service_.GrantLock();
    ITMKSwitcherCallback* switcher = service_.SwitcherCallbacks().front();
    ITMKSwitcherStillsCallback* stills = service_.StillsCallbacks().front();
    Latch together(3);
    std::thread disconnecting([&] {
      together.ArriveAndWait();
      switcher->Notify(kEventDisconnected);
    });
    std::thread completing([&] {
      together.ArriveAndWait();
      stills->Notify(kEventTransferCompleted, nullptr, 1);
    });
    together.ArriveAndWait();
    frontEnd.Close();
    disconnecting.join();
    completing.join();
    ASSERT_EQ(service_.LiveObjects(), 0) << "round " << round;
  }
}

TEST_F(Exporting, IgnoresALockThatIsGrantedAfterItClosed) {
  ExportUpToTheLock();
  frontEnd_.Close();
  service_.GrantLock();
  EXPECT_THAT(service_.Pictures(), IsEmpty());
}

TEST_F(Exporting, IgnoresALockThatIsGrantedTooLate) {
  ExportUpToTheLock();
  ITMKSwitcherStillsCallback* stills = service_.StillsCallbacks().front();
  service_.SendSwitcherEvent(kEventDisconnected);
  service_.GrantLock();
  EXPECT_THAT(service_.Pictures(), IsEmpty());
  // An end that was already on its way is told; there is nothing left to unlock or to show.
  std::thread([=] { stills->Notify(kEventTransferCompleted, nullptr, 1); }).join();
  frontEnd_.TakeUntil(6);
  EXPECT_THAT(Told(), ElementsAre("disconnected", "exported"));
  EXPECT_EQ(service_.Count(Call::kUnlock), 0);
  service_.GrantLock();
  EXPECT_EQ(service_.Count(Call::kSetPicture), 0);
}

TEST_F(Exporting, IgnoresALockThatIsGrantedAfterTheEnd) {
  ExportUpToTheUpload();
  service_.SendStillsEvent(kEventTransferCancelled, 1);
  service_.GrantLock();
  EXPECT_EQ(service_.Count(Call::kSetPicture), 1);
}

TEST_F(Exporting, KeepsTheNextFrameWhenTheEndOfTheLastComesLate) {
  ExportUpToTheUpload(0);
  // The next export is prepared while the end of this one is still being dealt with.
  service_.At(Call::kSetSource, [&](int) { ExportUpToTheLock(); });
  service_.SendStillsEvent(kEventTransferCompleted, 1);
  service_.GrantLock();
  EXPECT_EQ(service_.Pictures().size(), 2U);
}

TEST_F(Exporting, UploadsTheNewestWhenExportsOverlap) {
  ExportUpToTheLock();
  frontEnd_.Export(u"Second", 2);
  service_.WaitFor(Call::kLock, 2);
  service_.GrantLock();
  ASSERT_EQ(service_.Pictures().size(), 1U);
  EXPECT_EQ(service_.Pictures()[0].name, u"Second");
  EXPECT_EQ(service_.Pictures()[0].slot, 2U);
  EXPECT_EQ(service_.LiveObjects(), 5);  // one frame
}

TEST_F(Exporting, ReportsEveryErrorInItsWords) {
  const std::vector<std::pair<std::uint32_t, std::string>> errors = {
      {1, kNoMemory},
      {2, kStepFailed},
      {3, kWrongMode},
      {4, "Error: Unable to connect to the switcher device."},
      {5, "Error: An unknown error has occured."},
      {77, "Error: An unknown error has occured."}};
  ReportTransferError(frontEnd_.Control(), TransferError::kNone);
  for (const auto& [code, message] : errors) {
    ReportTransferError(frontEnd_.Control(), static_cast<TransferError>(code));
    EXPECT_EQ(frontEnd_.TakeNext(), message);
  }
}

}  // namespace
}  // namespace mixdecks
