// The system's message box, as far as the plug-in uses it: one button, an error icon.
//
// On Windows it is the system's box, modal to its owner. Elsewhere a box is handed to the
// presenter that the program installed, or printed to standard error when there is none.
#pragma once

#include <cstdint>
#include <functional>

namespace mixdecks {

/// Error icon with one OK button.
inline constexpr std::uint32_t kMessageBoxIconError = 16;

/// Shows a box and returns when it was answered. `owner` is a window handle or null; both texts
/// are zero-terminated narrow text in the system's code page. Call on the thread of the owner.
void ShowMessageBox(void* owner, const char* text, const char* caption, std::uint32_t flags);

/// What shows boxes where there is no window system. The portable adapter alone has it.
using MessageBoxPresenter =
    std::function<void(void* owner, const char* text, const char* caption, std::uint32_t flags)>;

/// Installs `presenter` for all later boxes; an empty one restores printing. Returns the one that
/// was installed before. The presenter runs on the thread that shows the box.
MessageBoxPresenter SetMessageBoxPresenter(MessageBoxPresenter presenter);

}  // namespace mixdecks
