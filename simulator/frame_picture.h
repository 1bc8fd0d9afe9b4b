// What an `ay10` frame looks like, as a picture with alpha.
//
// A PNG's colours are not multiplied by its alpha, a frame's often are, and a frame does not say
// which. It shows, though: multiplied luma never exceeds its alpha, and nothing shines where alpha
// is zero. A frame that keeps to this is taken as premultiplied and divided again for the picture;
// any other holds straight colours, which go into the picture as they are.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "simulator/pool.h"

namespace mixdecks::simulator {

/// Judges a frame of pairs of `ay10` pixels.
FrameAlpha JudgeAlpha(std::span<const std::uint8_t> frame) noexcept;

/// The frame of a still as a PNG file of 8-bit RGBA. `frame` has `still.Bytes()` bytes; mode, size
/// and alpha of the still say how to read it. Throws `std::bad_alloc`.
std::vector<std::uint8_t> EncodePicture(const Still& still, std::span<const std::uint8_t> frame);

}  // namespace mixdecks::simulator
