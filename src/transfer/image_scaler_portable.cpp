#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "platform/heap.h"
#include "transfer/image_scaler.h"

#define STB_IMAGE_RESIZE_STATIC
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#define STBIR_MALLOC(size, context) ((void)(context), mixdecks::HeapAllocate(size))
#define STBIR_FREE(block, context) ((void)(context), mixdecks::HeapRelease(block))
#include <stb/stb_image_resize.h>

namespace mixdecks {
namespace {

constexpr std::int32_t kBytesPerPixel = 4;

std::atomic<bool> scalerStarted = false;

/// One direction of a drawing: the destination's pixels `begin` to `end` whose centres lie inside
/// a rectangle that begins at `start` and may reach out of the destination.
struct Extent {
  std::int32_t begin, end;
  float scale;  ///< destination pixels per source pixel
  float shift;  ///< distance of `begin` from the rectangle's edge

  std::int32_t Length() const { return end - begin; }
};

Extent ExtentInside(float start, float length, std::int32_t sourceLength,
                    std::int32_t destinationLength) {
  const auto limit = static_cast<float>(destinationLength);
  const float begin = std::clamp(std::ceil(start - 0.5F), 0.0F, limit);
  const float end = std::clamp(std::ceil(start + length - 0.5F), begin, limit);
  return {static_cast<std::int32_t>(begin), static_cast<std::int32_t>(end),
          length / static_cast<float>(sourceLength), begin - start};
}

bool Resample(const std::uint8_t* source, std::int32_t sourceWidth, std::int32_t sourceHeight,
              std::uint8_t* destination, std::int32_t destinationWidth, const Extent& across,
              const Extent& down) {
  const std::int32_t rowBytes = destinationWidth * kBytesPerPixel;
  std::uint8_t* corner = destination + std::ptrdiff_t{down.begin} * rowBytes +
                         std::ptrdiff_t{across.begin} * kBytesPerPixel;
  return stbir_resize_subpixel(source, sourceWidth, sourceHeight, sourceWidth * kBytesPerPixel,
                               corner, across.Length(), down.Length(), rowBytes, STBIR_TYPE_UINT8,
                               kBytesPerPixel, STBIR_ALPHA_CHANNEL_NONE, 0, STBIR_EDGE_CLAMP,
                               STBIR_EDGE_CLAMP, STBIR_FILTER_CATMULLROM, STBIR_FILTER_CATMULLROM,
                               STBIR_COLORSPACE_LINEAR, nullptr, across.scale, down.scale,
                               across.shift, down.shift) != 0;
}

}  // namespace

void StartImageScaler() noexcept {
  scalerStarted = true;
}

void StopImageScaler() noexcept {
  scalerStarted = false;
}

bool DrawScaledImage(const std::uint8_t* source, std::int32_t sourceWidth,
                     std::int32_t sourceHeight, std::uint8_t* destination,
                     std::int32_t destinationWidth, std::int32_t destinationHeight,
                     const FitRect& rectangle) noexcept {
  if (!scalerStarted || sourceWidth < 1 || sourceHeight < 1 || destinationWidth < 1 ||
      destinationHeight < 1) {
    return false;
  }
  std::memset(destination, 0,
              static_cast<std::size_t>(destinationWidth) *
                  static_cast<std::size_t>(destinationHeight) * kBytesPerPixel);
  const Extent across =
      ExtentInside(rectangle.left, rectangle.width, sourceWidth, destinationWidth);
  const Extent down =
      ExtentInside(rectangle.top, rectangle.height, sourceHeight, destinationHeight);
  if (across.Length() == 0 || down.Length() == 0) return true;
  return Resample(source, sourceWidth, sourceHeight, destination, destinationWidth, across, down);
}

}  // namespace mixdecks
