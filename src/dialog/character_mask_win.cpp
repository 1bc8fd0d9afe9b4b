#include "dialog/character_mask_win.h"

#include <new>

#include "dialog/character_mask.h"
#include "dialog/window_messages.h"
#include "platform/heap.h"

namespace mixdecks {
namespace {

/// What a masked edit carries as its user data.
struct MaskTable {
  CharacterMask mask;
  WNDPROC oldProcedure = nullptr;
};
static_assert(sizeof(MaskTable) == 1032);

MaskTable* TableOf(HWND edit) {
  return reinterpret_cast<MaskTable*>(GetWindowLongPtrW(edit, GWLP_USERDATA));
}

LRESULT CALLBACK MaskProcedure(HWND edit, UINT message, WPARAM first, LPARAM second) {
  MaskTable* table = TableOf(edit);
  const WNDPROC oldProcedure = table->oldProcedure;
  if (message == kWmChar && !table->mask.Passes(first)) return 0;
  if (message == kWmNcDestroy) {
    // Whatever still arrives finds the edit as it was before the mask.
    SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(oldProcedure));
    SetWindowLongPtrW(edit, GWLP_USERDATA, 0);
    HeapRelease(table);
  }
  return CallWindowProcW(oldProcedure, edit, message, first, second);
}

bool IsMasked(HWND edit) {
  return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(edit, GWLP_WNDPROC)) == MaskProcedure;
}

}  // namespace

void InstallCharacterMask(HWND edit, std::string_view characters, bool allow) {
  if (IsMasked(edit)) {
    TableOf(edit)->mask.Set(characters, allow);
    return;
  }
  void* memory = HeapAllocate(sizeof(MaskTable));
  if (memory == nullptr) return;
  auto* table = new (memory) MaskTable;
  table->mask.Set(characters, allow);
  table->oldProcedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(edit, GWLP_WNDPROC));
  // The table first: the procedure may be asked from the moment it is there.
  SetWindowLongPtrW(edit, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(table));
  SetWindowLongPtrW(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(MaskProcedure));
}

}  // namespace mixdecks
