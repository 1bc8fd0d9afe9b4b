#include "dialog/slot_list.h"

#include "dialog/window_messages.h"

namespace mixdecks {
namespace {

std::u16string Decimal(std::uint32_t number) {
  const std::string digits = std::to_string(static_cast<std::int32_t>(number));
  return {digits.begin(), digits.end()};
}

std::intptr_t AsParameter(const std::u16string& text) {
  return reinterpret_cast<std::intptr_t>(text.c_str());
}

/// Nothing reads the data; the index stands one past the item it is meant for.
void SetItemData(WindowOperations& window, std::uint32_t slot) {
  window.SendToControl(kSlotList, kCbSetItemData, std::uintptr_t{slot} + 1, slot);
}

}  // namespace

std::u16string SlotText(std::uint32_t slot, bool inUse, const char16_t* name) {
  std::u16string text = Decimal(slot + 1) + u". ";
  if (!inUse) return text + u"Empty";
  return name == nullptr ? text : text + name;
}

void FillSlotList(WindowOperations& window, std::uint32_t count) {
  window.SendToControl(kSlotList, kCbResetContent, 0, 0);
  for (std::uint32_t slot = 0; slot < count; ++slot) {
    const std::u16string text = SlotText(slot, false, nullptr);
    window.SendToControl(kSlotList, kCbAddString, 0, AsParameter(text));
    SetItemData(window, slot);
  }
}

void ReplaceSlot(WindowOperations& window, std::uint32_t slot, bool inUse, const char16_t* name) {
  const std::u16string text = SlotText(slot, inUse, name);
  window.SendToControl(kSlotList, kCbDeleteString, slot, 0);
  window.SendToControl(kSlotList, kCbInsertString, slot, AsParameter(text));
  SetItemData(window, slot);
}

}  // namespace mixdecks
