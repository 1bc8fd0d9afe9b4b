// Turns what the validator saw into a sentence that says what to look at.
#pragma once

#include <string>
#include <vector>

#include "tests/pixelconvert/harness/fault_trap.h"
#include "tests/pixelconvert/harness/placed_picture.h"
#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::proof {

std::string DescribeFault(const Fault& fault, const PlacedPicture& source,
                          const PlacedPicture& destination);

/// The first byte of the window that is not as expected. `fill` is what the window held before.
std::string DescribeDifference(const PlacedPicture& destination, const reference::Format& format,
                               const std::vector<std::uint8_t>& expected, const std::uint8_t* fill);

}  // namespace mixdecks::proof
