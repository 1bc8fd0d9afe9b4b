#include <sys/mman.h>

#include <new>

#include "tests/pixelconvert/harness/address_range.h"

namespace mixdecks::proof {

AddressRange::AddressRange(std::size_t bytes) : bytes_(bytes) {
  void* range = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (range == MAP_FAILED) throw std::bad_alloc();
  begin_ = static_cast<std::uint8_t*>(range);
}

AddressRange::~AddressRange() {
  munmap(begin_, bytes_);
}

void AddressRange::Open(std::size_t offset, std::size_t bytes) {
  if (mprotect(begin_ + offset, bytes, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
}

}  // namespace mixdecks::proof
