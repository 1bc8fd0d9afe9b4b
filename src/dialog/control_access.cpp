#include "dialog/control_access.h"

#include <algorithm>

namespace mixdecks {

void SetControlText(WindowOperations& window, int control, const char16_t* text) {
  window.SendToControl(control, kWmSetText, 0, reinterpret_cast<std::intptr_t>(text));
}

std::size_t ReadControlText(WindowOperations& window, int control, std::span<char16_t> buffer,
                            std::size_t limit) {
  const std::intptr_t answer = window.SendToControl(control, kWmGetText, limit,
                                                    reinterpret_cast<std::intptr_t>(buffer.data()));
  const std::size_t length =
      std::min(static_cast<std::size_t>(std::max<std::intptr_t>(answer, 0)), limit);
  buffer[length] = u'\0';
  return length;
}

bool IsChecked(WindowOperations& window, int control) {
  return window.SendToControl(control, kBmGetCheck, 0, 0) == 1;
}

void SetChecked(WindowOperations& window, int control, bool checked) {
  window.SendToControl(control, kBmSetCheck, checked ? 1 : 0, 0);
}

std::int32_t SelectedIndex(WindowOperations& window, int list) {
  return static_cast<std::int32_t>(window.SendToControl(list, kCbGetCurSel, 0, 0));
}

void SelectIndex(WindowOperations& window, int list, std::int32_t index) {
  // Sign-extended: the list takes -1 as "nothing".
  window.SendToControl(list, kCbSetCurSel, static_cast<std::uintptr_t>(std::intptr_t{index}), 0);
}

void EnableControls(WindowOperations& window, std::span<const int> controls, bool enabled) {
  for (const int control : controls)
    window.EnableControl(control, enabled);
}

}  // namespace mixdecks
