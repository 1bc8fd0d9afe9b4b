// Subclasses an edit so that its character mask decides which keys reach it.
#pragma once

#include <windows.h>

#include <string_view>

namespace mixdecks {

/// Sets the mask of `edit` (dialog/character_mask.h). The first call on a window subclasses it;
/// later calls change its table, which goes away with the window. Without memory nothing is masked.
void InstallCharacterMask(HWND edit, std::string_view characters, bool allow);

}  // namespace mixdecks
