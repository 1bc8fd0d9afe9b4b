#include "dialog/window_operations_win.h"

#include "dialog/character_mask_win.h"

namespace mixdecks {

std::intptr_t WindowOperationsWin::SendToControl(int control, std::uint32_t message,
                                                 std::uintptr_t first, std::intptr_t second) {
  return SendMessageW(Control(control), message, first, second);
}

void WindowOperationsWin::EnableControl(int control, bool enabled) {
  EnableWindow(Control(control), enabled);
}

void WindowOperationsWin::RedrawControl(int control) {
  // A null window would mean every window of the desktop.
  if (HWND window = Control(control)) InvalidateRect(window, nullptr, FALSE);
}

bool WindowOperationsWin::IsControl(std::intptr_t window, int control) {
  return Control(control) == reinterpret_cast<HWND>(window);
}

void WindowOperationsWin::InstallCharacterMask(int control, std::string_view characters,
                                               bool allow) {
  if (HWND window = Control(control)) mixdecks::InstallCharacterMask(window, characters, allow);
}

void WindowOperationsWin::SetCaption(const char16_t* caption) {
  SetWindowTextW(dialog_, reinterpret_cast<const wchar_t*>(caption));
}

void WindowOperationsWin::StartTimer(std::uintptr_t timer, std::uint32_t milliseconds) {
  SetTimer(dialog_, timer, milliseconds, nullptr);
}

void WindowOperationsWin::StopTimer(std::uintptr_t timer) {
  KillTimer(dialog_, timer);
}

void WindowOperationsWin::Post(std::uint32_t message, std::uintptr_t first, std::intptr_t second) {
  PostMessageW(dialog_, message, first, second);
}

void WindowOperationsWin::End(std::intptr_t result) {
  EndDialog(dialog_, result);
}

void WindowOperationsWin::SetTextColour(std::uintptr_t deviceContext, std::uint32_t colour) {
  SetTextColor(reinterpret_cast<HDC>(deviceContext), colour);
}

std::intptr_t WindowOperationsWin::DeviceContextBrush() {
  return reinterpret_cast<std::intptr_t>(GetStockObject(DC_BRUSH));
}

DialogPlacement WindowOperationsWin::Placement() {
  HWND parent = GetParent(dialog_);
  if (parent == nullptr) parent = GetDesktopWindow();
  RECT client{};
  GetClientRect(parent, &client);
  POINT corners[] = {{client.left, client.top}, {client.right, client.bottom}};
  for (POINT& corner : corners)
    ClientToScreen(parent, &corner);
  RECT window{};
  GetWindowRect(dialog_, &window);

  DialogPlacement placement;
  placement.parentLeft = corners[0].x;
  placement.parentTop = corners[0].y;
  placement.parentRight = corners[1].x;
  placement.parentBottom = corners[1].y;
  placement.width = window.right - window.left;
  placement.height = window.bottom - window.top;
  placement.captionButtonWidth = GetSystemMetrics(SM_CXSIZE);
  placement.screenWidth = GetSystemMetrics(SM_CXSCREEN);
  placement.screenHeight = GetSystemMetrics(SM_CYSCREEN);
  placement.hasSystemMenu = (GetWindowLongPtrW(dialog_, GWL_STYLE) & WS_SYSMENU) != 0;
  return placement;
}

void WindowOperationsWin::Place(std::int32_t left, std::int32_t top, std::int32_t width,
                                std::int32_t height) {
  SetWindowPos(dialog_, nullptr, left, top, width, height, SWP_NOZORDER);
}

}  // namespace mixdecks
