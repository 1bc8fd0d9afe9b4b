#include "dialog/centre_dialog.h"

#include <algorithm>

namespace mixdecks {

ScreenPosition CentredPosition(const DialogPlacement& placement) noexcept {
  std::int32_t step = placement.captionButtonWidth;
  // Without a system menu the caption looks shorter: about two thirds of the step.
  if (!placement.hasSystemMenu) step += (step / 3 - step) / 2;

  const std::int32_t freeWidth = placement.parentRight - placement.parentLeft - placement.width;
  const std::int32_t freeHeight = placement.parentBottom - placement.parentTop - placement.height;
  ScreenPosition position{(std::max(freeWidth, 0) >> 1) - step + placement.parentLeft,
                          std::max(freeHeight, 0) / 3 + placement.parentTop};
  if (position.left + placement.width > placement.screenWidth) {
    position.left = std::max(placement.screenWidth - placement.width, 0);
  }
  if (position.top + placement.height > placement.screenHeight) {
    position.top = std::max(placement.screenHeight - placement.height, 0);
  }
  return position;
}

void CentreDialog(WindowOperations& window) {
  const DialogPlacement placement = window.Placement();
  const ScreenPosition position = CentredPosition(placement);
  window.Place(position.left, position.top, placement.width, placement.height);
}

}  // namespace mixdecks
