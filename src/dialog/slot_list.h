// The list of the media pool's slots in the export dialog. The dialog's thread.
#pragma once

#include <cstdint>
#include <string>

#include "dialog/window_operations.h"

namespace mixdecks {

/// What the list shows for a slot (from 0): its number from 1, and its still's name or "Empty".
std::u16string SlotText(std::uint32_t slot, bool inUse, const char16_t* name);

/// Lists `count` empty slots in place of what was listed.
void FillSlotList(WindowOperations& window, std::uint32_t count);

/// Shows what one slot holds now. May lose the list's selection.
void ReplaceSlot(WindowOperations& window, std::uint32_t slot, bool inUse, const char16_t* name);

}  // namespace mixdecks
