// How large a picture may be.
#pragma once

#include "tools/picture/picture_header.h"

namespace mixdecks {

/// Checks that the plug-in can take a picture with so many pixels, and its format's decoder, too.
/// Throws `PictureError` with a size of the same shape that fits.
void CheckArea(const PictureHeader& header);

}  // namespace mixdecks
