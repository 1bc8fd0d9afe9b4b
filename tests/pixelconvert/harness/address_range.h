// A range of addresses that fault when touched, parts of which can be opened.
#pragma once

#include <cstddef>
#include <cstdint>

namespace mixdecks::proof {

class AddressRange {
 public:
  /// What ranges and their open parts are multiples of, whatever the system's page size.
  static constexpr std::size_t kGranule = 65536;

  /// Takes `bytes` addresses, a multiple of the granule, but no memory; throws std::bad_alloc.
  explicit AddressRange(std::size_t bytes);
  ~AddressRange();
  AddressRange(const AddressRange&) = delete;
  AddressRange& operator=(const AddressRange&) = delete;

  std::uint8_t* Begin() const { return begin_; }

  /// Makes a part readable and writable; both numbers are multiples of the granule.
  void Open(std::size_t offset, std::size_t bytes);

 private:
  std::uint8_t* begin_ = nullptr;
  std::size_t bytes_ = 0;
};

}  // namespace mixdecks::proof
