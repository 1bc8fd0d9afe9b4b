// The sections of a PSD file.
#pragma once

#include <cstdint>
#include <span>

#include "tools/picture/picture_header.h"

namespace mixdecks {

struct PsdLayout {
  PictureHeader header;
  int channels = 0;              ///< of the merged picture, 1 to 56
  bool hasTransparency = false;  ///< the channel after the colours is the merged transparency
  bool packed = false;           ///< rows are run-length packed
  /// Packed: a big-endian 16-bit length for each row of each channel, then the rows. Otherwise all
  /// samples, big-endian. Channel after channel either way.
  std::span<const std::uint8_t> picture;

  std::uint64_t RowBytes() const {
    return std::uint64_t{header.width} * static_cast<unsigned>(header.depth / 8);
  }
  std::uint64_t Rows() const {
    return std::uint64_t{header.height} * static_cast<unsigned>(channels);
  }
};

/// Finds the sections and checks that the merged picture is there. Throws `PictureError`.
PsdLayout ReadPsdLayout(std::span<const std::uint8_t> file);

}  // namespace mixdecks
