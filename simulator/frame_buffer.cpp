#include "simulator/frame_buffer.h"

#include <algorithm>

#include "transfer/video_modes.h"

namespace mixdecks::simulator {
namespace {

/// A word of it has its top bit set, which no `ay10` pixel has.
constexpr std::uint8_t kUnwritten = 0xA5;

bool IsUnwritten(std::span<const std::uint8_t> bytes) {
  return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == kUnwritten; });
}

}  // namespace

FrameBuffer::FrameBuffer(std::uint32_t mode, std::uint32_t rowPadding)
    : mode_(mode),
      height_(FindVideoMode(mode)->height),
      rowBytes_(FindVideoMode(mode)->width * 4),
      rowPadding_(rowPadding),
      bytes_(std::size_t{RowBytes()} * height_ + 2 * kGuardBytes, kUnwritten) {}

std::span<const std::uint8_t> FrameBuffer::Row(std::uint32_t row) const noexcept {
  return {bytes_.data() + kGuardBytes + std::size_t{RowBytes()} * row, rowBytes_};
}

std::span<const std::uint8_t> FrameBuffer::BehindRow(std::uint32_t row) const noexcept {
  return {Row(row).data() + rowBytes_, rowPadding_};
}

std::optional<std::string> FrameBuffer::FindFault() const {
  const std::span<const std::uint8_t> all = bytes_;
  if (!IsUnwritten(all.first(kGuardBytes))) return "bytes before the frame were written";
  if (!IsUnwritten(all.last(kGuardBytes))) return "bytes behind the frame were written";
  for (std::uint32_t row = 0; row < height_; ++row) {
    if (IsUnwritten(Row(row))) return "row " + std::to_string(row) + " was not written";
    if (!IsUnwritten(BehindRow(row))) {
      return "bytes behind row " + std::to_string(row) + " were written";
    }
  }
  return std::nullopt;
}

std::vector<std::uint8_t> FrameBuffer::Packed() const {
  std::vector<std::uint8_t> packed;
  packed.reserve(std::size_t{rowBytes_} * height_);
  for (std::uint32_t row = 0; row < height_; ++row) {
    const std::span<const std::uint8_t> bytes = Row(row);
    packed.insert(packed.end(), bytes.begin(), bytes.end());
  }
  return packed;
}

}  // namespace mixdecks::simulator
