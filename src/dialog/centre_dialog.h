// Places a dialog over its parent: a little left of the middle, a third of the way down.
#pragma once

#include "dialog/window_operations.h"

namespace mixdecks {

struct ScreenPosition {
  std::int32_t left;
  std::int32_t top;
  friend bool operator==(const ScreenPosition&, const ScreenPosition&) = default;
};

/// Where the dialog's upper left corner goes. Only the screen's right and bottom edges correct
/// it: the corner may have negative coordinates over a parent that has them.
ScreenPosition CentredPosition(const DialogPlacement& placement) noexcept;

/// Moves the dialog there and keeps its size.
void CentreDialog(WindowOperations& window);

}  // namespace mixdecks
