#include "tests/e2e/holdings.h"

// clang-format off
#include <windows.h>
#include <psapi.h>  // needs the one before it
// clang-format on

namespace mixdecks::e2e {
namespace {

/// Handles are multiples of four and given out from below.
std::int64_t CountHandles() {
  constexpr std::uintptr_t kHighest = 0x8000;
  std::int64_t count = 0;
  for (std::uintptr_t value = 4; value <= kHighest; value += 4) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

/// An entry of the table of GDI objects, which each process can read.
struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;  ///< 0 while unused
  std::uint8_t flags;
  std::uint64_t userPointer;
};
static_assert(sizeof(GdiEntry) == 24);

const std::uint8_t* ProcessBlock() {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb");
  return reinterpret_cast<const std::uint8_t*(WINAPI*)()>(reinterpret_cast<void*>(address))();
}

std::int64_t CountGdiObjects() {
  const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
  if (counted != 0) return counted;
  // Wine keeps a table for each process, where Windows has one for all.
  constexpr std::size_t kTableOffset = 0xF8;
  constexpr std::size_t kEntries = 0x4000;
  const auto* table = *reinterpret_cast<const GdiEntry* const*>(ProcessBlock() + kTableOffset);
  std::int64_t count = 0;
  for (std::size_t i = 0; i < kEntries; ++i)
    count += table[i].type != 0 ? 1 : 0;
  return count;
}

std::int64_t CountWindows() {
  std::int64_t count = 0;
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND, LPARAM counter) -> BOOL {
        ++*reinterpret_cast<std::int64_t*>(counter);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&count));
  return count;
}

std::int64_t PrivateBytes() {
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return static_cast<std::int64_t>(memory.PagefileUsage);
}

}  // namespace

Holdings operator-(const Holdings& left, const Holdings& right) {
  return {left.handles - right.handles, left.gdiObjects - right.gdiObjects,
          left.windows - right.windows, left.bytes - right.bytes};
}

std::ostream& operator<<(std::ostream& output, const Holdings& holdings) {
  return output << holdings.handles << " handles, " << holdings.gdiObjects << " GDI objects, "
                << holdings.windows << " windows, " << holdings.bytes << " bytes";
}

Holdings CurrentHoldings() {
  return {CountHandles(), CountGdiObjects(), CountWindows(), PrivateBytes()};
}

}  // namespace mixdecks::e2e
