// Multiplies the colours of a 10-bit YUVA image by its alpha.
#pragma once

#include <cstdint>

#include "transfer/transfer_error.h"

namespace mixdecks {

/// Premultiplies a packed image of big-endian words (alpha from bit 20, chroma from bit 10, luma
/// from bit 0) in place, if `premultiply` says so. Luma goes with its own pixel's alpha, both
/// chroma samples of a pair with the alpha of the pair's first pixel. Alpha and the two bits above
/// it stay. `format` has to be `kFrameFormatYuva`; any other gives `kUnknown`.
TransferError PremultiplyAlpha(std::uint8_t* image, std::int32_t width, std::int32_t height,
                               std::uint32_t format, bool premultiply) noexcept;

}  // namespace mixdecks
