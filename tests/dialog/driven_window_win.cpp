// The system's dialog, made of the resources that the library ships.
#include <windows.h>

#include <chrono>
#include <cstring>

#include "dialog/window_messages.h"
#include "dialog/window_operations_win.h"
#include "tests/dialog/driven_window.h"
#include "tests/platform/box_answerer.h"

namespace mixdecks::testing {
namespace {

constexpr std::chrono::seconds kPatience(20);

/// What the dialog's user data points at.
struct RunningDialog {
  WindowProcedure procedure;
  std::optional<WindowOperationsWin> window;
};

INT_PTR CALLBACK ForwardMessage(HWND dialog, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, second);
    reinterpret_cast<RunningDialog*>(second)->window.emplace(dialog);
  }
  auto* running = reinterpret_cast<RunningDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
  return running == nullptr ? 0 : running->procedure(*running->window, message, first, second);
}

/// Puts text where WM_PASTE takes it from. Other programs may have the clipboard open just now.
void PutOnClipboard(HWND owner, const std::u16string& text) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!OpenClipboard(owner) && std::chrono::steady_clock::now() < deadline)
    Sleep(1);
  EmptyClipboard();
  const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes);
  std::memcpy(GlobalLock(block), text.c_str(), bytes);
  GlobalUnlock(block);
  SetClipboardData(CF_UNICODETEXT, block);
  CloseClipboard();
}

class DrivenSystemWindow final : public DrivenWindow {
 public:
  explicit DrivenSystemWindow(WindowProcedure procedure)
      : running_{std::move(procedure), std::nullopt},
        dialog_(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kExportDialog),
                                   nullptr, ForwardMessage, reinterpret_cast<LPARAM>(&running_))) {}
  ~DrivenSystemWindow() override { DestroyWindow(dialog_); }

  WindowOperations& Operations() override { return *running_.window; }

  void Click(int button) override { SendMessageW(Control(button), BM_CLICK, 0, 0); }
  void Type(int edit, std::u16string_view keys) override {
    SendMessageW(Control(edit), EM_SETSEL, kEnd, kEnd);
    for (const char16_t key : keys)
      SendMessageW(Control(edit), WM_CHAR, key, 1);
  }
  void PasteOver(int edit, const std::u16string& text) override {
    PutOnClipboard(dialog_, text);
    SendMessageW(Control(edit), EM_SETSEL, 0, -1);
    SendMessageW(Control(edit), WM_PASTE, 0, 0);
  }
  void Choose(int list, std::int32_t index) override {
    SendMessageW(Control(list), CB_SETCURSEL, WPARAM(-1), 0);
    for (std::int32_t press = 0; press <= index; ++press)
      SendMessageW(Control(list), WM_KEYDOWN, VK_DOWN, 1);
  }

  std::u16string Caption() override { return TextOf(dialog_); }
  std::u16string Text(int control) override { return TextOf(Control(control)); }
  bool IsEnabled(int control) override { return IsWindowEnabled(Control(control)) != FALSE; }
  std::vector<std::u16string> Items(int list) override {
    std::vector<std::u16string> items(SendMessageW(Control(list), CB_GETCOUNT, 0, 0));
    for (std::size_t index = 0; index < items.size(); ++index) {
      items[index].resize(SendMessageW(Control(list), CB_GETLBTEXTLEN, index, 0) + 1);
      SendMessageW(Control(list), CB_GETLBTEXT, index,
                   reinterpret_cast<LPARAM>(items[index].data()));
      items[index].pop_back();
    }
    return items;
  }
  std::optional<std::uint32_t> TextColour(int edit) override {
    const HDC context = GetDC(Control(edit));
    const LRESULT brush = SendMessageW(dialog_, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(context),
                                       reinterpret_cast<LPARAM>(Control(edit)));
    const COLORREF colour = GetTextColor(context);
    ReleaseDC(Control(edit), context);
    const bool chosen = reinterpret_cast<HGDIOBJ>(brush) == GetStockObject(DC_BRUSH);
    return chosen ? std::optional<std::uint32_t>(colour) : std::nullopt;
  }
  WindowPlace Place() override {
    RECT place{};
    GetWindowRect(dialog_, &place);
    return {place.left, place.top, place.right - place.left, place.bottom - place.top};
  }
  bool WasRedrawn(int control) override {
    // Only what is to be seen is ever drawn.
    const bool wasShown = ShowWindow(dialog_, SW_SHOWNA) != FALSE;
    const bool redrawn = GetUpdateRect(Control(control), nullptr, FALSE) != FALSE;
    DrawEverything();
    return wasShown && redrawn;
  }
  bool HandleMessagesUntil(const std::function<bool()>& done) override {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!done()) {
      if (std::chrono::steady_clock::now() >= deadline) return false;
      MSG message;
      if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
      } else {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
      }
    }
    return true;
  }

 private:
  static constexpr WPARAM kEnd = 100000;

  void DrawEverything() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      DispatchMessageW(&message);
  }
  HWND Control(int control) const { return GetDlgItem(dialog_, control); }
  static std::u16string TextOf(HWND window) {
    std::u16string text(GetWindowTextLengthW(window) + 1, u'\0');
    GetWindowTextW(window, reinterpret_cast<wchar_t*>(text.data()), static_cast<int>(text.size()));
    text.pop_back();
    return text;
  }

  RunningDialog running_;
  HWND dialog_;
};

std::unique_ptr<DrivenWindow> OpenSystemWindow(WindowProcedure procedure) {
  return std::make_unique<DrivenSystemWindow>(std::move(procedure));
}

std::intptr_t RunSystemDialog(WindowProcedure procedure) {
  RunningDialog running{std::move(procedure), std::nullopt};
  return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kExportDialog), nullptr,
                         ForwardMessage, reinterpret_cast<LPARAM>(&running));
}

}  // namespace

std::vector<WindowAdapter> WindowAdapters() {
  return {HeadlessAdapter(), {"System", CanShowBoxes, OpenSystemWindow, RunSystemDialog}};
}

}  // namespace mixdecks::testing
