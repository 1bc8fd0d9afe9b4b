#include "transfer/fit_rect.h"

#include <cmath>

namespace mixdecks {

void ComputeFitRect(std::int32_t sourceWidth, std::int32_t sourceHeight,
                    std::int32_t destinationWidth, std::int32_t destinationHeight,
                    FitRect& rectangle) noexcept {
  const auto sw = static_cast<float>(sourceWidth);
  const auto sh = static_cast<float>(sourceHeight);
  const auto dw = static_cast<float>(destinationWidth);
  const auto dh = static_cast<float>(destinationHeight);
  if (sourceWidth == destinationWidth && sourceHeight == destinationHeight) {
    rectangle = {dw, dh, sw, sh};
    return;
  }
  const float ry = dh / sh;
  const float rx = dw / sw;
  const float scale = ry > rx ? rx : ry;
  const float scaledWidth = sw * scale;
  const float scaledHeight = sh * scale;
  rectangle = {std::floor((dw - scaledWidth) * 0.5F), std::floor((dh - scaledHeight) * 0.5F),
               std::ceil(scaledWidth), std::ceil(scaledHeight)};
}

}  // namespace mixdecks
