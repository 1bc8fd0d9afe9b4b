#include <windows.h>

#include <new>

#include "tests/pixelconvert/harness/address_range.h"

namespace mixdecks::proof {

AddressRange::AddressRange(std::size_t bytes) : bytes_(bytes) {
  begin_ = static_cast<std::uint8_t*>(VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS));
  if (begin_ == nullptr) throw std::bad_alloc();
}

AddressRange::~AddressRange() {
  VirtualFree(begin_, 0, MEM_RELEASE);
}

void AddressRange::Open(std::size_t offset, std::size_t bytes) {
  if (VirtualAlloc(begin_ + offset, bytes, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
    throw std::bad_alloc();
  }
}

}  // namespace mixdecks::proof
