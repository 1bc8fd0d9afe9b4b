// Where an image lands when it is made to fit a frame of another size.
#pragma once

#include <cstdint>

#include "transfer/image_scaler.h"

namespace mixdecks {

/// The largest rectangle of the source's aspect inside the destination, centred and widened to
/// whole pixels: left and top rounded down, width and height up. All sizes in pixels, above 0.
/// For equal sizes left and top are the destination's width and height: nobody draws then.
void ComputeFitRect(std::int32_t sourceWidth, std::int32_t sourceHeight,
                    std::int32_t destinationWidth, std::int32_t destinationHeight,
                    FitRect& rectangle) noexcept;

}  // namespace mixdecks
