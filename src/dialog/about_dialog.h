// The about box, which closes at a click, at escape and at return.
#pragma once

#include "dialog/window_operations.h"

namespace mixdecks {

/// The maker's notice in the about box; the version resource carries the same words.
inline constexpr char kLegalNotice[] = "Copyright (C) Tollenmark Design. All rights reserved.";

/// Handles a message of the about box; non-zero when it did.
std::intptr_t AboutDialogProc(WindowOperations& window, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second);

}  // namespace mixdecks
