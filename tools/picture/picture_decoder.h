// From a picture file to the document that the host would have open.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>

#include "tools/memory_host/host_document.h"
#include "tools/picture/picture_header.h"

namespace mixdecks {

/// A picture and the format it came in. The document's image mode and depth are the picture's own.
/// Its composite has three channels in RGB and indexed colour, one in greyscale, and none in any
/// other mode, which the plug-in refuses anyway.
struct Picture {
  PictureFormat format{};
  int orientation = 1;  ///< as in `PictureHeader`; the document lies as the file does
  HostDocument document;
};

/// Decodes a whole file. Alpha becomes the merged transparency; saved alpha channels of a PSD
/// become extra alpha channels. Throws `PictureError`.
Picture DecodePicture(std::span<const std::uint8_t> file);

/// What the host's mode change to RGB does for greyscale and indexed colour. Throws `PictureError`
/// for modes that need colour management.
void ConvertToRgb(HostDocument& document);

/// What the host's mode change between 8 and 16 bits per channel does.
void ConvertDepth(HostDocument& document, std::int16_t depth);

/// Makes a greyscale picture of the same size an extra alpha channel of `document`, in its depth.
/// Throws `PictureError`.
void AddAlphaChannel(HostDocument& document, HostDocument greyscale);

}  // namespace mixdecks
