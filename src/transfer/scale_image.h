// Scales an 8-bit BGRA image into another size, aspect kept, alpha included.
#pragma once

#include <cstdint>

namespace mixdecks {

/// Draws the source as large as it fits, centred, into the destination; margins become zero in all
/// four lanes. Both images are packed and do not overlap; sizes in pixels.
///
/// The source is used up: its pixels may be overwritten, which saves a copy of what may be the
/// largest image of all. Without alpha the destination's byte 3 is left undefined. Needs a started
/// image scaler. False when that fails or memory for the scaled alpha is missing; the destination
/// is undefined then.
bool ScaleImage(std::uint8_t* source, std::int32_t sourceWidth, std::int32_t sourceHeight,
                bool hasAlpha, std::uint8_t* destination, std::int32_t destinationWidth,
                std::int32_t destinationHeight) noexcept;

}  // namespace mixdecks
