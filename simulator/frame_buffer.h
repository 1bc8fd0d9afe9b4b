// The bytes of a frame that a client writes.
//
// All of it starts as a pattern that no frame holds, so that rows which were never written, and
// bytes which were not to be written, show when the frame is handed in.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace mixdecks::simulator {

class FrameBuffer {
 public:
  /// A frame for video mode `mode` with `rowPadding` bytes behind each row. Throws
  /// `std::bad_alloc`.
  FrameBuffer(std::uint32_t mode, std::uint32_t rowPadding);

  std::uint32_t Mode() const noexcept { return mode_; }
  std::uint32_t Height() const noexcept { return height_; }
  std::uint32_t RowBytes() const noexcept { return rowBytes_ + rowPadding_; }
  std::uint8_t* Bytes() noexcept { return bytes_.data() + kGuardBytes; }

  /// What is wrong with what the client wrote; nothing when all is well.
  std::optional<std::string> FindFault() const;

  /// The rows without gaps.
  std::vector<std::uint8_t> Packed() const;

 private:
  static constexpr std::size_t kGuardBytes = 64;

  std::span<const std::uint8_t> Row(std::uint32_t row) const noexcept;
  std::span<const std::uint8_t> BehindRow(std::uint32_t row) const noexcept;

  std::uint32_t mode_;
  std::uint32_t height_;
  std::uint32_t rowBytes_;
  std::uint32_t rowPadding_;
  std::vector<std::uint8_t> bytes_;  ///< the rows between two guards
};

}  // namespace mixdecks::simulator
