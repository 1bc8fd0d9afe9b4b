#include <windows.h>

#include "tests/platform/box_answerer.h"

namespace mixdecks::testing {
namespace {

constexpr int kTextControl = 0xFFFF;

struct Answering {
  std::vector<ShownBox> boxes;
  const std::function<void()>* pumped = nullptr;
};
Answering* answering = nullptr;

std::string TextOf(HWND window) {
  char text[512] = {};
  GetWindowTextA(window, text, sizeof(text));
  return text;
}

bool IsBox(HWND window) {
  char className[16] = {};
  GetClassNameA(window, className, sizeof(className));
  return std::string(className) == "#32770";
}

// The icon's control has another number on each system: it is known by its style.
bool HasIcon(HWND box) {
  for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    const LONG_PTR style = GetWindowLongPtrA(child, GWL_STYLE);
    const bool holdsIcons = (style & SS_TYPEMASK) == SS_ICON;
    if (holdsIcons && SendMessageA(child, STM_GETICON, 0, 0) != 0) return true;
  }
  return false;
}

// The box is looked at when it becomes active; its answer is posted, so that it closes from its
// own message loop.
LRESULT CALLBACK WatchWindows(int code, WPARAM wParam, LPARAM lParam) {
  const auto window = reinterpret_cast<HWND>(wParam);
  if (code == HCBT_ACTIVATE && IsBox(window)) {
    answering->boxes.push_back(
        {TextOf(GetDlgItem(window, kTextControl)), TextOf(window), HasIcon(window)});
    if (*answering->pumped) (*answering->pumped)();
    PostMessageA(window, WM_COMMAND, IDOK, 0);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

bool CanShowBoxes() {
  const HWND window =
      CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
  if (window == nullptr) return false;
  DestroyWindow(window);
  return true;
}

std::vector<ShownBox> AnswerBoxes(const std::function<void()>& show,
                                  const std::function<void()>& pumped) {
  Answering current{{}, &pumped};
  answering = &current;
  const HHOOK hook = SetWindowsHookExA(WH_CBT, WatchWindows, nullptr, GetCurrentThreadId());
  show();
  UnhookWindowsHookEx(hook);
  answering = nullptr;
  return current.boxes;
}

}  // namespace mixdecks::testing
