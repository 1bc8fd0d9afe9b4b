// The frame around every kernel: rows, strides, whole blocks, and the rest of a row through zeroed
// scratch.
//
// A kernel is a KernelShape with a Row, which is what a row carries from block to block:
//
//   Row::Begin(src)                    looks at the first pixels of a row
//   Row::Convert(src, dst)             converts one block
//   Row::Finish(src, pixels, width)    prepares scratch that holds the last `pixels` of a row
//
// What a kernel touches in memory is decided here alone: exactly the source row's bytes, exactly
// the destination row's, and nothing between rows. Scratch is zeroed, so that equal input gives
// equal output, the padding of a destination row included.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "pixelconvert/pixel_format.h"
#include "pixelconvert/simd.h"

namespace mixdecks {

/// What the frame has to know of a kernel. A block is converted where it lies if `kFollowing`
/// pixels of the row follow it, and in scratch otherwise.
template <std::uint32_t kPixels, const RowUnit& kSource, const RowUnit& kDestination,
          std::uint32_t kFollowing = 0>
struct KernelShape {
  static constexpr std::uint32_t kBlockPixels = kPixels;
  static constexpr RowUnit kSourceRow = kSource;
  static constexpr RowUnit kDestinationRow = kDestination;
  static constexpr std::size_t kSourceBlock = kSource.RowBytes(kPixels);
  static constexpr std::size_t kDestinationBlock = kDestination.RowBytes(kPixels);
  static constexpr std::uint32_t kLookAhead = kFollowing;
};

/// The base of a Row whose blocks know nothing of each other.
struct SeparateBlocks {
  void Begin(const std::uint8_t*) {}
  void Finish(std::uint8_t*, std::uint32_t, std::uint32_t) {}
};

template <class Kernel>
class RowConverter {
 public:
  explicit RowConverter(std::uint32_t width)
      : width_(width),
        wholeBlocks_(
            width < Kernel::kLookAhead ? 0 : (width - Kernel::kLookAhead) / Kernel::kBlockPixels),
        restPixels_(width - wholeBlocks_ * Kernel::kBlockPixels),
        sourceRest_(Kernel::kSourceRow.RowBytes(width) - wholeBlocks_ * Kernel::kSourceBlock),
        destinationRest_(Kernel::kDestinationRow.RowBytes(width) -
                         wholeBlocks_ * Kernel::kDestinationBlock) {}

  void Convert(std::uint8_t* dst, const std::uint8_t* src) const {
    typename Kernel::Row row;
    if (wholeBlocks_ != 0) {
      row.Begin(src);
      ConvertBlocks(row, wholeBlocks_, dst, src);
    }
    if (restPixels_ != 0) {
      ConvertRest(row, dst + wholeBlocks_ * Kernel::kDestinationBlock,
                  src + wholeBlocks_ * Kernel::kSourceBlock);
    }
  }

 private:
  static constexpr std::size_t kPrefetchBlocks = 8;
  // With a look-ahead of more than a pixel the rest may reach into a second block.
  static constexpr std::size_t kRestBlocks = Kernel::kLookAhead > 1 ? 2 : 1;
  static constexpr std::size_t kScratchMargin = 16;

  static void ConvertBlocks(typename Kernel::Row& carried, std::size_t blocks, std::uint8_t* dst,
                            const std::uint8_t* src) {
    typename Kernel::Row row = carried;  // a local stays in registers
    for (; blocks != 0; --blocks) {
      simd::PrefetchOnce(src, kPrefetchBlocks * Kernel::kSourceBlock);
      row.Convert(src, dst);
      src += Kernel::kSourceBlock;
      dst += Kernel::kDestinationBlock;
    }
    carried = row;
  }

  void ConvertRest(typename Kernel::Row& row, std::uint8_t* dst, const std::uint8_t* src) const {
    alignas(16) std::uint8_t in[kRestBlocks * Kernel::kSourceBlock + kScratchMargin] = {};
    alignas(16) std::uint8_t out[kRestBlocks * Kernel::kDestinationBlock + kScratchMargin];
    std::memcpy(in, src, sourceRest_);
    row.Finish(in, restPixels_, width_);
    if (wholeBlocks_ == 0) row.Begin(in);
    ConvertBlocks(row, restPixels_ > Kernel::kBlockPixels ? 2 : 1, out, in);
    std::memcpy(dst, out, destinationRest_);
  }

  std::uint32_t width_;
  std::uint32_t wholeBlocks_;
  std::uint32_t restPixels_;
  std::size_t sourceRest_;
  std::size_t destinationRest_;
};

/// The converter that a cell of the grid holds.
template <class Kernel>
void ConvertRows(std::uint32_t width, std::int32_t height, std::uint8_t* dst,
                 std::int32_t dstStride, const std::uint8_t* src, std::int32_t srcStride) {
  if (width == 0) return;  // a row of nothing may stand nowhere: its pointers are left alone
  const RowConverter<Kernel> rows(width);
  for (std::int32_t row = 0; row < height; ++row) {
    rows.Convert(dst + std::ptrdiff_t{row} * dstStride, src + std::ptrdiff_t{row} * srcStride);
  }
}

}  // namespace mixdecks
