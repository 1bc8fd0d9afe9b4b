#include "transfer/scale_image.h"

#include "platform/heap.h"
#include "transfer/alpha_lane.h"
#include "transfer/fit_rect.h"
#include "transfer/image_scaler.h"
#include "transfer/image_size.h"

namespace mixdecks {

bool ScaleImage(std::uint8_t* source, std::int32_t sourceWidth, std::int32_t sourceHeight,
                bool hasAlpha, std::uint8_t* destination, std::int32_t destinationWidth,
                std::int32_t destinationHeight) noexcept {
  FitRect rectangle{};
  ComputeFitRect(sourceWidth, sourceHeight, destinationWidth, destinationHeight, rectangle);
  const auto draw = [&](std::uint8_t* into) {
    return DrawScaledImage(source, sourceWidth, sourceHeight, into, destinationWidth,
                           destinationHeight, rectangle);
  };
  if (!draw(destination)) return false;
  if (!hasAlpha) return true;

  // The scaler ignores the fourth byte, so alpha is drawn once more as the blue of a picture.
  const HeapBlock scaledAlpha(ImageBytes(destinationWidth, destinationHeight));
  if (!scaledAlpha) return false;
  KeepAlphaAsBlue(source, PixelCount(sourceWidth, sourceHeight));
  if (!draw(scaledAlpha.Data())) return false;
  SetAlphaFromBlue(destination, scaledAlpha.Data(),
                   PixelCount(destinationWidth, destinationHeight));
  return true;
}

}  // namespace mixdecks
