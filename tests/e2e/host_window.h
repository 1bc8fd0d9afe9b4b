// A host's window with a given client area on the screen, and where a dialog stands over it.
#pragma once

#include <windows.h>

#include <algorithm>

namespace mixdecks::e2e {

class HostWindow {
 public:
  HostWindow(int left, int top, int width, int height)
      : window_(CreateWindowExW(0, L"STATIC", L"Host", WS_POPUP | WS_VISIBLE, left, top, width,
                                height, nullptr, nullptr, nullptr, nullptr)) {}
  ~HostWindow() { DestroyWindow(window_); }
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  HWND Get() const noexcept { return window_; }

 private:
  HWND window_;
};

/// The upper left corner of a dialog over `area`: a little left of the middle by two thirds of a
/// caption button, and one third of the free space down.
inline POINT PlaceOver(const RECT& area, const RECT& dialog) {
  const auto free = [](LONG parent, LONG own) { return std::max(parent - own, LONG{0}); };
  const LONG button = GetSystemMetrics(SM_CXSIZE);
  const LONG step = button + (button / 3 - button) / 2;
  return {area.left + free(area.right - area.left, dialog.right - dialog.left) / 2 - step,
          area.top + free(area.bottom - area.top, dialog.bottom - dialog.top) / 3};
}

}  // namespace mixdecks::e2e
