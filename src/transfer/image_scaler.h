// The port to the system's image scaler: bicubic, into a float rectangle of a zeroed image.
//
// GDI+ on Windows; elsewhere a resampler of the same kind whose results need not match GDI+ bit
// for bit. `StartImageScaler` and `StopImageScaler` are called on the front end's thread;
// `DrawScaledImage` on the worker, between them.
#pragma once

#include <cstdint>

namespace mixdecks {

/// Where an image lands inside another, in pixels of the other.
struct FitRect {
  float left, top, width, height;
};

/// Makes the scaler ready; until then, and after the stop, drawing fails. Starts do not nest.
void StartImageScaler() noexcept;
void StopImageScaler() noexcept;

/// Zeroes the destination and draws the source over `rectangle` of it, replacing what is there.
/// Both images have four bytes a pixel, rows without gaps and less than 2 GB; bytes 0, 1, 2 are
/// scaled, byte 3 of the source is ignored and byte 3 of the destination undefined where it was
/// drawn on. False when the scaler is not started or fails.
bool DrawScaledImage(const std::uint8_t* source, std::int32_t sourceWidth,
                     std::int32_t sourceHeight, std::uint8_t* destination,
                     std::int32_t destinationWidth, std::int32_t destinationHeight,
                     const FitRect& rectangle) noexcept;

}  // namespace mixdecks
