#include "tests/e2e/dialog_driver.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "dialog/window_messages.h"
#include "tests/e2e/wait_for.h"

namespace mixdecks::e2e {
namespace {

constexpr int kBoxText = 0xFFFF;

const wchar_t* Wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

std::string NarrowTextOf(HWND window) {
  char text[512] = {};
  GetWindowTextA(window, text, sizeof text);
  return text;
}

bool IsErrorBox(HWND box) {
  if (GetDlgItem(box, IDOK) == nullptr && GetDlgItem(box, IDCANCEL) == nullptr) return false;
  int buttons = 0;
  bool hasIcon = false;
  for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    char className[16] = {};
    GetClassNameA(child, className, sizeof className);
    const bool isShown = (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) != 0;
    if (std::string(className) == "Button" && isShown) ++buttons;
    const auto icon = reinterpret_cast<HICON>(SendMessageW(child, STM_GETICON, 0, 0));
    if (icon != nullptr && icon == LoadIconW(nullptr, IDI_ERROR)) hasIcon = true;
  }
  return buttons == 1 && hasIcon;
}

BOOL CALLBACK CollectDialog(HWND window, LPARAM windows) {
  char className[16] = {};
  GetClassNameA(window, className, sizeof className);
  if (std::string(className) == "#32770") {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

}  // namespace

bool DialogDriver::WaitUntil(const char* what, const std::function<bool()>& condition) {
  bool holds = false;
  WaitFor([&] { return (holds = condition()) || ended_; });
  EXPECT_TRUE(holds) << what << (ended_ ? ": the selector has returned" : ": not in time");
  if (holds) Settle(dialog_);
  return holds;
}

void DialogDriver::Settle(HWND window) {
  DWORD_PTR answer = 0;
  const auto patience = static_cast<UINT>(std::chrono::milliseconds(kPatience).count());
  if (window) SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, patience, &answer);
}

std::vector<HWND> DialogDriver::DialogWindows() const {
  std::vector<HWND> windows;
  EnumThreadWindows(pluginThread_, CollectDialog, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

std::u16string DialogDriver::TextOf(HWND window) const {
  const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
  std::u16string text(static_cast<std::size_t>(length), u'\0');
  SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(length + 1),
               reinterpret_cast<LPARAM>(text.data()));
  return text;
}

bool DialogDriver::WaitForDialog() {
  const bool found = WaitUntil("the export dialog opens", [this] {
    for (const HWND window : DialogWindows()) {
      if (GetDlgItem(window, kExportButton) != nullptr) dialog_ = window;
    }
    return dialog_ != nullptr;
  });
  // Answered as soon as the thread looks at messages, which it does once the dialog is filled in.
  if (found) Settle(dialog_);
  return found;
}

bool DialogDriver::WaitUntilConnected() {
  return WaitForDialog() && WaitUntil("the dialog is connected",
                                      [this] { return Caption() == u"ORVA Switcher Media Pool"; });
}

bool DialogDriver::WaitUntilExporting() {
  return WaitUntil("the export is under way", [this] { return !IsEnabled(kExportButton); });
}

bool DialogDriver::WaitUntilUsable() {
  return WaitUntil("the dialog is usable", [this] { return IsEnabled(kExportButton); });
}

bool DialogDriver::WaitUntilClosed() {
  const bool closed = WaitFor([this] { return ended_.load(); });
  EXPECT_TRUE(closed) << "the dialog closes";
  return closed;
}

bool DialogDriver::IsChecked(int control) const {
  return SendMessageW(Control(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

std::vector<std::u16string> DialogDriver::Slots() const {
  std::vector<std::u16string> slots;
  const HWND list = Control(kSlotList);
  const LRESULT count = SendMessageW(list, CB_GETCOUNT, 0, 0);
  for (WPARAM index = 0; index < static_cast<WPARAM>(count); ++index) {
    const LRESULT length = SendMessageW(list, CB_GETLBTEXTLEN, index, 0);
    if (length < 0) break;  // the list is being filled right now
    std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
    SendMessageW(list, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    slots.push_back(text);
  }
  return slots;
}

int DialogDriver::SelectedSlot() const {
  return static_cast<int>(SendMessageW(Control(kSlotList), CB_GETCURSEL, 0, 0));
}

std::optional<COLORREF> DialogDriver::TextColour(int edit) const {
  const HWND control = Control(edit);
  const HDC context = GetDC(control);
  SetTextColor(context, RGB(1, 2, 3));
  const LRESULT brush = SendMessageW(dialog_, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(context),
                                     reinterpret_cast<LPARAM>(control));
  const COLORREF colour = GetTextColor(context);
  ReleaseDC(control, context);
  const bool chosen = reinterpret_cast<HGDIOBJ>(brush) == GetStockObject(DC_BRUSH);
  return chosen ? std::optional(colour) : std::nullopt;
}

RECT DialogDriver::Rectangle() const {
  RECT rectangle{};
  GetWindowRect(dialog_, &rectangle);
  return rectangle;
}

std::vector<int> DialogDriver::DisabledControls() const {
  std::vector<int> disabled;
  for (const int control : {1007, 1010, 1012, 1013, 1014, 1015, 1018, 1020, 1021, 1022, 2}) {
    if (!IsEnabled(control)) disabled.push_back(control);
  }
  return disabled;
}

void DialogDriver::TypeKeys(int edit, const std::u16string& keys) const {
  for (const char16_t key : keys)
    PostMessageW(Control(edit), WM_CHAR, key, 1);
}

void DialogDriver::PasteOver(int edit, const std::u16string& text) const {
  SendMessageW(Control(edit), EM_SETSEL, 0, -1);
  SendMessageW(Control(edit), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Wide(text)));
}

void DialogDriver::ChooseSlot(int index) const {
  // News of a slot may put the old selection back between the two messages.
  EXPECT_TRUE(WaitFor([&] {
    SendMessageW(Control(kSlotList), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(dialog_, WM_COMMAND, CommandParameter(kSlotList, kCbnSelChange),
                 reinterpret_cast<LPARAM>(Control(kSlotList)));
    return SelectedSlot() == index;
  }));
}

void DialogDriver::Press(int button) const {
  PostMessageW(Control(button), BM_CLICK, 0, 0);
}

void DialogDriver::PressClose() const {
  PostMessageW(dialog_, WM_COMMAND, CommandParameter(kCloseButton, kBnClicked),
               reinterpret_cast<LPARAM>(Control(kCloseButton)));
}

std::vector<MessageBoxView> DialogDriver::Boxes() const {
  std::vector<MessageBoxView> boxes;
  for (const HWND window : DialogWindows()) {
    const HWND text = GetDlgItem(window, kBoxText);
    const bool isAbout = GetDlgItem(window, kAboutVersion) != nullptr;
    const bool isExport = GetDlgItem(window, kExportButton) != nullptr;
    if (text == nullptr || isAbout || isExport) continue;
    boxes.push_back({window, GetWindow(window, GW_OWNER), NarrowTextOf(text), NarrowTextOf(window),
                     IsErrorBox(window)});
  }
  return boxes;
}

std::optional<MessageBoxView> DialogDriver::WaitForBox() {
  std::vector<MessageBoxView> boxes;
  const bool shown = WaitUntil("a message box opens", [&] {
    boxes = Boxes();
    return !boxes.empty() && !boxes.front().text.empty();
  });
  if (!shown) return std::nullopt;
  // Its text is there before its icon is, and before it takes away the buttons that it lacks.
  Settle(boxes.front().window);
  boxes = Boxes();
  return boxes.empty() ? std::nullopt : std::optional(boxes.front());
}

void DialogDriver::Answer(const MessageBoxView& box) {
  // A box that is not yet in its loop may lose a command: it is told until it goes.
  EXPECT_TRUE(WaitFor([&] {
    if (!IsWindow(box.window)) return true;
    PostMessageW(box.window, WM_COMMAND, IDOK, 0);
    return false;
  })) << "the message box goes away";
}

HWND DialogDriver::WaitForAboutBox() {
  HWND about = nullptr;
  WaitUntil("the about box opens", [&] {
    for (const HWND window : DialogWindows()) {
      if (GetDlgItem(window, kAboutVersion) != nullptr) about = window;
    }
    return about != nullptr;
  });
  return about;
}

void DialogDriver::CloseEverything() {
  const bool closed = WaitFor([this] {
    if (ended_) return true;
    for (const HWND window : DialogWindows()) {
      PostMessageW(window, WM_COMMAND, IDOK, 0);
      PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    }
    return false;
  });
  if (closed) return;
  // Nothing more can be tried: the thread that runs the plug-in will never come back.
  std::fputs("the plug-in hangs\n", stderr);
  std::fflush(stderr);
  TerminateProcess(GetCurrentProcess(), 3);
}

}  // namespace mixdecks::e2e
