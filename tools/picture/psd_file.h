// The host's own file format, as far as the merged picture goes.
#pragma once

#include <cstdint>
#include <span>

#include "tools/memory_host/host_document.h"

namespace mixdecks {

/// The merged channels of a PSD file in RGB or greyscale that `InspectPicture` accepted, 8 or 16
/// bits. The picture's transparency is told from saved alpha channels as the host tells them; the
/// white that the file's colours are blended with is taken out again. Throws `PictureError`.
HostDocument DecodePsd(std::span<const std::uint8_t> file);

}  // namespace mixdecks
