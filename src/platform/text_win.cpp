#include <windows.h>
// The strings' header relies on the one before it.
#include <oleauto.h>

#include <limits>
#include <new>

#include "platform/text.h"

namespace mixdecks {
namespace {

static_assert(sizeof(OLECHAR) == sizeof(char16_t));

BSTR AsBstr(char16_t* text) {
  return reinterpret_cast<BSTR>(text);
}

}  // namespace

char16_t* AllocateText(const char16_t* characters, std::size_t length) {
  if (length > std::numeric_limits<UINT>::max()) throw std::bad_alloc();
  BSTR text =
      SysAllocStringLen(reinterpret_cast<const OLECHAR*>(characters), static_cast<UINT>(length));
  if (text == nullptr) throw std::bad_alloc();
  return reinterpret_cast<char16_t*>(text);
}

void FreeText(char16_t* text) noexcept {
  SysFreeString(AsBstr(text));
}

std::size_t TextLength(const char16_t* text) noexcept {
  return SysStringLen(AsBstr(const_cast<char16_t*>(text)));
}

}  // namespace mixdecks
