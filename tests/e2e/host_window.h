// A host's window with a given client area on the screen.
#pragma once

#include <windows.h>

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

}  // namespace mixdecks::e2e
