// A conversion that the library does not have. This program has a lookup of its own, which finds
// nothing while a test wants it so.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "pixelconvert/pixel_converter.h"
#include "tests/transfer/fake_service.h"
#include "tests/transfer/front_end.h"

namespace mixdecks {
namespace {

using testing::ElementsAre;

bool converterMissing = false;

void LeaveUnconverted(std::uint32_t, std::int32_t, std::uint8_t*, std::int32_t, const std::uint8_t*,
                      std::int32_t) {}

}  // namespace

PixelConverter GetPixelConverter(PixelFormatCode, PixelFormatCode, ColourSpaceIndex) noexcept {
  return converterMissing ? nullptr : LeaveUnconverted;
}

namespace {

TEST(MissingConverter, IsToldAsAStepThatFailedAndTheNextExportWorks) {
  FakeService service;
  service.videoMode = FourCharacterCode("ntsc");
  service.slots.clear();
  FrontEnd frontEnd;
  frontEnd.Connect(0);
  frontEnd.Open({720, 486, false, std::vector<std::uint8_t>(std::size_t{720} * 486 * 4)});
  converterMissing = true;
  frontEnd.Export();
  frontEnd.TakeUntil(3);
  converterMissing = false;
  EXPECT_THAT(frontEnd.Results(),
              ElementsAre("connected, reason 0, stills 0, players 2",
                          "Error: An error occured during export.", "not exported"));
  EXPECT_EQ(service.Count(Call::kCreateFrame), 0);

  frontEnd.Export();
  service.WaitFor(Call::kLock);
  service.GrantLock();
  service.SendStillsEvent(kEventTransferCompleted, 1);
  EXPECT_EQ(frontEnd.TakeNext(), "exported");
}

}  // namespace
}  // namespace mixdecks
