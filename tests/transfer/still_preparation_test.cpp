// The steps from image to frame, on one thread, against a switcher that follows a script.
#include "transfer/still_preparation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "pixelconvert/pixel_format.h"
#include "tests/pixelconvert/reference/families.h"
#include "tests/transfer/fake_service.h"
#include "transfer/image_scaler.h"
#include "transfer/image_size.h"

namespace mixdecks {
namespace {

constexpr std::uint32_t kSmallMode = FourCharacterCode("ntsc");  // 720 x 486, Rec. 601
constexpr std::int32_t kSmallWidth = 720;
constexpr std::int32_t kSmallHeight = 486;

StillImage RandomImage(std::int32_t width, std::int32_t height, bool hasAlpha) {
  StillImage image{HeapBlock(ImageBytes(width, height)), width, height, hasAlpha};
  std::minstd_rand random(7);
  for (std::size_t i = 0; i < ImageBytes(width, height); ++i) {
    image.pixels.Data()[i] = static_cast<std::uint8_t>(random() >> 8);
  }
  return image;
}

std::vector<std::uint8_t> BytesOf(const StillImage& image) {
  const unsigned char* bytes = image.pixels.Data();
  return {bytes, bytes + ImageBytes(image.width, image.height)};
}

std::vector<std::uint8_t> ReferenceFrame(const StillImage& image, ColourSpaceIndex colourSpace) {
  std::vector<std::uint8_t> bgra = BytesOf(image);
  if (!image.hasAlpha) {
    for (std::size_t i = 3; i < bgra.size(); i += 4)
      bgra[i] = 255;
  }
  const std::size_t rowBytes = ImageBytes(image.width, 1);
  std::vector<std::uint8_t> frame;
  for (std::size_t row = 0; row < bgra.size(); row += rowBytes) {
    const reference::Bytes converted =
        reference::RgbToYuv(kBgra, kAy10, colourSpace, static_cast<std::size_t>(image.width),
                            reference::Row(bgra.data() + row, rowBytes));
    frame.insert(frame.end(), converted.begin(), converted.end());
  }
  return frame;
}

class StillPreparation : public testing::Test {
 protected:
  StillPreparation() {
    service_.videoMode = kSmallMode;
    connection_.switcher = ServicePointer<ITMKSwitcher>::Adopt(CreateFakeSwitcher(service_));
    QueryService(*connection_.switcher.Get(), kSwitcherMediaPoolId, connection_.mediaPool);
    StartImageScaler();
  }
  ~StillPreparation() override { StopImageScaler(); }

  TransferError Prepare(StillImage image, bool premultiply = false) {
    return PrepareFrame(connection_, std::move(image), premultiply, frame_);
  }
  const std::uint8_t* FrameBytes() {
    void* bytes = nullptr;
    frame_->GetBytes(&bytes);
    return static_cast<const std::uint8_t*>(bytes);
  }

  FakeService service_;
  SwitcherConnection connection_;
  ServicePointer<ITMKSwitcherFrame> frame_;
};

TEST_F(StillPreparation, KeepsAnImageOfTheRightSize) {
  for (const bool hasAlpha : {false, true}) {
    StillImage image = RandomImage(kSmallWidth, kSmallHeight, hasAlpha);
    const std::vector<std::uint8_t> before = BytesOf(image);
    ASSERT_EQ(FitToVideoMode(connection_, image), TransferError::kNone);
    EXPECT_EQ(BytesOf(image), before);
  }
}

TEST_F(StillPreparation, ScalesAnyOtherSize) {
  for (const auto& [width, height] :
       {std::pair{100, 50}, {1440, 972}, {486, 720}, {720, 485}, {719, 486}, {1, 1}}) {
    StillImage image = RandomImage(width, height, true);
    ASSERT_EQ(FitToVideoMode(connection_, image), TransferError::kNone);
    EXPECT_EQ(image.width, kSmallWidth);
    EXPECT_EQ(image.height, kSmallHeight);
  }
}

TEST_F(StillPreparation, ConvertsAsTheReferenceDoes) {
  for (const auto& [mode, colourSpace] : {std::pair{kSmallMode, kRec601},
                                          {FourCharacterCode("10p5"), kRec709},
                                          {FourCharacterCode("????"), kRec709}}) {
    for (const bool hasAlpha : {false, true}) {
      service_.videoMode = mode;
      StillImage image = RandomImage(64, 9, hasAlpha);
      const std::vector<std::uint8_t> expected = ReferenceFrame(image, colourSpace);
      std::uint32_t format = 0;
      ASSERT_EQ(ConvertToFrameFormat(connection_, image, format), TransferError::kNone);
      EXPECT_EQ(format, 0x79757661U);
      EXPECT_EQ(BytesOf(image), expected) << mode << ' ' << hasAlpha;
    }
  }
}

TEST_F(StillPreparation, MakesOpaqueMarginsWithoutAlpha) {
  StillImage image = RandomImage(100, 10, false);
  std::uint32_t format = 0;
  ASSERT_EQ(FitToVideoMode(connection_, image), TransferError::kNone);
  ASSERT_EQ(ConvertToFrameFormat(connection_, image, format), TransferError::kNone);
  for (std::size_t i = 0; i < ImageBytes(kSmallWidth, kSmallHeight); i += 4) {
    const int alpha = (image.pixels.Data()[i] << 8 | image.pixels.Data()[i + 1]) >> 4;
    ASSERT_EQ(alpha, 940) << i;
  }
}

TEST_F(StillPreparation, CopiesRowsIntoAFrameWithGaps) {
  for (const std::int32_t padding : {0, 4, 48}) {
    service_.rowPadding = padding;
    const StillImage image = RandomImage(kSmallWidth, kSmallHeight, true);
    const std::vector<std::uint8_t> expected = ReferenceFrame(image, kRec601);
    ASSERT_EQ(Prepare(RandomImage(kSmallWidth, kSmallHeight, true)), TransferError::kNone);
    const std::size_t rowBytes = kSmallWidth * 4;
    const std::size_t distance = rowBytes + static_cast<std::size_t>(padding);
    for (std::size_t row = 0; row < kSmallHeight; ++row) {
      const std::uint8_t* found = FrameBytes() + row * distance;
      ASSERT_EQ(std::memcmp(found, expected.data() + row * rowBytes, rowBytes), 0) << row;
      for (std::size_t i = rowBytes; i < distance; ++i)
        ASSERT_EQ(found[i], service_.frameFill);
    }
  }
}

TEST_F(StillPreparation, PremultipliesOnlyWhenAsked) {
  ASSERT_EQ(Prepare(RandomImage(kSmallWidth, kSmallHeight, true), false), TransferError::kNone);
  const std::size_t bytes = ImageBytes(kSmallWidth, kSmallHeight);
  const std::vector<std::uint8_t> plain(FrameBytes(), FrameBytes() + bytes);
  ASSERT_EQ(Prepare(RandomImage(kSmallWidth, kSmallHeight, true), true), TransferError::kNone);
  const std::vector<std::uint8_t> premultiplied(FrameBytes(), FrameBytes() + bytes);
  EXPECT_NE(premultiplied, plain);
  for (std::size_t i = 0; i < bytes; i += 4)
    ASSERT_EQ(premultiplied[i], plain[i]) << i;  // alpha
}

TEST_F(StillPreparation, CopiesNoMoreRowsThanTheFrameHas) {
  service_.missingRows = 5;
  EXPECT_EQ(Prepare(RandomImage(kSmallWidth, kSmallHeight, true)), TransferError::kNone);
  service_.missingRows = -5;
  EXPECT_EQ(Prepare(RandomImage(kSmallWidth, kSmallHeight, true)), TransferError::kNone);
}

TEST_F(StillPreparation, RefusesAFrameOfNarrowerRows) {
  service_.rowPadding = -4;
  EXPECT_EQ(Prepare(RandomImage(kSmallWidth, kSmallHeight, true)), TransferError::kStepFailed);
}

TEST_F(StillPreparation, TellsWhereItFailed) {
  const auto prepare = [this] { return Prepare(RandomImage(100, 100, true)); };
  service_.Fail(Call::kGetVideoMode, kResultFail, 1);
  EXPECT_EQ(prepare(), TransferError::kVideoModeUnreadable);
  service_.Fail(Call::kGetVideoMode, kResultFail, 3);  // the second reading of the next one
  EXPECT_EQ(prepare(), TransferError::kVideoModeUnreadable);
  service_.Fail(Call::kCreateFrame, kResultFail, 1);
  EXPECT_EQ(prepare(), TransferError::kStepFailed);
  service_.Fail(Call::kGetBytes, kResultFail, 1);
  EXPECT_EQ(prepare(), TransferError::kStepFailed);
  EXPECT_EQ(prepare(), TransferError::kNone);

  StopImageScaler();
  EXPECT_EQ(prepare(), TransferError::kStepFailed);
  StartImageScaler();
}

TEST_F(StillPreparation, SurvivesAServiceThatGivesNothing) {
  service_.GiveNothing(Call::kGetBytes);
  EXPECT_EQ(Prepare(RandomImage(100, 100, true)), TransferError::kStepFailed);
  service_.GiveNothing(Call::kCreateFrame);
  EXPECT_EQ(Prepare(RandomImage(100, 100, true)), TransferError::kStepFailed);
}

TEST_F(StillPreparation, FailsWhenTheSwitcherIsGone) {
  connection_.mediaPool.Reset();
  EXPECT_EQ(Prepare(RandomImage(100, 100, true)), TransferError::kStepFailed);
  connection_.switcher.Reset();
  EXPECT_EQ(Prepare(RandomImage(100, 100, true)), TransferError::kVideoModeUnreadable);
}

TEST_F(StillPreparation, FailsWhenTheSwitcherGoesOnTheWay) {
  service_.At(Call::kGetVideoMode, [this](int nth) {
    if (nth == 2) connection_.mediaPool.Reset();
  });
  EXPECT_EQ(Prepare(RandomImage(100, 100, true)), TransferError::kStepFailed);

  StillImage image = RandomImage(100, 100, true);
  std::uint32_t format = 0;
  ASSERT_EQ(FitToVideoMode(connection_, image), TransferError::kNone);
  connection_.switcher.Reset();
  EXPECT_EQ(ConvertToFrameFormat(connection_, image, format), TransferError::kVideoModeUnreadable);
}

TEST_F(StillPreparation, RefusesAnImageWithoutPixels) {
  EXPECT_EQ(Prepare({HeapBlock(4), 0, 10, false}), TransferError::kStepFailed);
  EXPECT_EQ(Prepare({HeapBlock(4), 10, -1, true}), TransferError::kStepFailed);
}

}  // namespace
}  // namespace mixdecks
