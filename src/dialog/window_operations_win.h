// WindowOperations over a real dialog: each operation is one or two calls of the system.
#pragma once

#include <windows.h>

#include "dialog/window_operations.h"

namespace mixdecks {

class WindowOperationsWin final : public WindowOperations {
 public:
  explicit WindowOperationsWin(HWND dialog) noexcept : dialog_(dialog) {}

  std::intptr_t SendToControl(int control, std::uint32_t message, std::uintptr_t first,
                              std::intptr_t second) override;
  void EnableControl(int control, bool enabled) override;
  void RedrawControl(int control) override;
  bool IsControl(std::intptr_t window, int control) override;
  void InstallCharacterMask(int control, std::string_view characters, bool allow) override;
  void SetCaption(const char16_t* caption) override;
  void StartTimer(std::uintptr_t timer, std::uint32_t milliseconds) override;
  void StopTimer(std::uintptr_t timer) override;
  void Post(std::uint32_t message, std::uintptr_t first, std::intptr_t second) override;
  void End(std::intptr_t result) override;
  void SetTextColour(std::uintptr_t deviceContext, std::uint32_t colour) override;
  std::intptr_t DeviceContextBrush() override;
  DialogPlacement Placement() override;
  void Place(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) override;

 private:
  HWND Control(int control) const noexcept { return GetDlgItem(dialog_, control); }

  HWND dialog_;
};

}  // namespace mixdecks
