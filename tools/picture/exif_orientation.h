// How a camera was held.
#pragma once

#include <cstdint>
#include <span>

namespace mixdecks {

/// 1 for a picture that is shown as it lies, 2 to 8 for one to be turned or mirrored first. `exif`
/// is the metadata from its byte order mark on; what is damaged or absent asks for nothing.
int ExifOrientation(std::span<const std::uint8_t> exif);

}  // namespace mixdecks
