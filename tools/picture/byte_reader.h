// Reads numbers out of a file's bytes and never past their end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/picture/picture_error.h"

namespace mixdecks {

/// Every operation throws `TruncatedPicture` when the bytes end too early.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  std::size_t Remaining() const noexcept { return bytes_.size(); }
  std::span<const std::uint8_t> Take(std::uint64_t count) {
    if (count > bytes_.size()) throw TruncatedPicture();
    const auto taken = bytes_.first(static_cast<std::size_t>(count));
    bytes_ = bytes_.subspan(taken.size());
    return taken;
  }
  void Skip(std::uint64_t count) { Take(count); }

  std::uint8_t Byte() { return Take(1)[0]; }
  std::uint16_t Big16() { return static_cast<std::uint16_t>(Big(2)); }
  std::uint32_t Big32() { return Big(4); }
  std::uint16_t Little16() { return static_cast<std::uint16_t>(Little(2)); }
  std::uint32_t Little32() { return Little(4); }

 private:
  std::uint32_t Big(std::size_t count) {
    std::uint32_t value = 0;
    for (const std::uint8_t byte : Take(count))
      value = value << 8 | byte;
    return value;
  }
  std::uint32_t Little(std::size_t count) {
    std::uint32_t value = 0;
    int shift = 0;
    for (const std::uint8_t byte : Take(count)) {
      value |= std::uint32_t{byte} << shift;
      shift += 8;
    }
    return value;
  }

  std::span<const std::uint8_t> bytes_;
};

}  // namespace mixdecks
