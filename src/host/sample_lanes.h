// Spreads the samples of one channel over the pixels of an interleaved image. Any thread.
//
// `image` holds `count` pixels of four bytes; `lane` from 0 to 3 is the byte that the channel goes
// to. Image and samples do not overlap and need no alignment.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks {

/// Stores each sample as one byte and leaves the other bytes of its pixel alone.
void SpreadSamples8(const std::uint8_t* samples, std::size_t count, std::uint8_t* image,
                    std::size_t lane) noexcept;

/// Narrows samples of the host's 16-bit scale, 0 to 32768, to 8 bits and stores each as a
/// little-endian word of 32 bits that begins at its lane. Bytes past the last pixel are dropped.
void SpreadSamples16(const std::uint16_t* samples, std::size_t count, std::uint8_t* image,
                     std::size_t lane) noexcept;

/// Makes all lanes zero but those of `keptLanes`, a mask over a pixel as a little-endian word.
void ClearOtherLanes(std::uint8_t* image, std::size_t count, std::uint32_t keptLanes) noexcept;

}  // namespace mixdecks
