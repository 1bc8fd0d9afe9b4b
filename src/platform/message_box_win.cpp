#include <windows.h>

#include "platform/message_box.h"

namespace mixdecks {

static_assert(kMessageBoxIconError == (MB_ICONERROR | MB_OK));

void ShowMessageBox(void* owner, const char* text, const char* caption, std::uint32_t flags) {
  MessageBoxA(static_cast<HWND>(owner), text, caption, flags);
}

}  // namespace mixdecks
