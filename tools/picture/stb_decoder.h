// Decodes PNG, JPEG and BMP.
#pragma once

#include <cstdint>
#include <span>

#include "tools/memory_host/host_document.h"
#include "tools/picture/picture_header.h"

namespace mixdecks {

/// An RGB document of the picture's depth, transparency included, whatever the picture's mode.
/// Throws `PictureError`.
HostDocument DecodeWithStb(std::span<const std::uint8_t> file, const PictureHeader& header);

}  // namespace mixdecks
