// The plain formats of pipelines: PPM and PGM in their binary forms.
#pragma once

#include <cstdint>
#include <span>

#include "tools/memory_host/host_document.h"
#include "tools/picture/picture_header.h"

namespace mixdecks {

struct PnmFile {
  PictureHeader header;
  std::span<const std::uint8_t> samples;  ///< all of them, 16-bit ones big-endian
};

/// Checks that the samples are there, unless the sides are beyond `kLargestSide`. Throws
/// `PictureError`.
PnmFile ReadPnm(std::span<const std::uint8_t> file);

/// One channel in greyscale, three in RGB. Throws `PictureError`.
HostDocument DecodePnm(std::span<const std::uint8_t> file);

}  // namespace mixdecks
