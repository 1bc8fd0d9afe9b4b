#include <objidl.h>
#include <windows.h>

#include <algorithm>

#include "transfer/image_scaler.h"

// GDI+'s headers use the macros that NOMINMAX takes away.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>

#include <cstddef>
#include <cstring>

namespace mixdecks {
namespace {

using namespace Gdiplus::DllExports;

constexpr std::int32_t kBytesPerPixel = 4;
constexpr INT kFormat32bppRgb = 139273;  // ignores the fourth byte

ULONG_PTR scalerToken = 0;

/// A GDI+ bitmap over pixels of ours, disposed of on exit.
class Bitmap {
 public:
  Bitmap(const std::uint8_t* pixels, std::int32_t width, std::int32_t height) {
    status_ = GdipCreateBitmapFromScan0(width, height, width * kBytesPerPixel, kFormat32bppRgb,
                                        const_cast<BYTE*>(pixels), &bitmap_);
  }
  ~Bitmap() {
    if (bitmap_ != nullptr) GdipDisposeImage(bitmap_);
  }
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;

  bool Usable() const { return status_ == Gdiplus::Ok && bitmap_ != nullptr; }
  Gdiplus::GpBitmap* Get() const { return bitmap_; }

 private:
  Gdiplus::GpBitmap* bitmap_ = nullptr;
  Gdiplus::GpStatus status_;
};

/// The drawing surface of a bitmap, deleted on exit.
class Surface {
 public:
  explicit Surface(const Bitmap& bitmap) {
    status_ = GdipGetImageGraphicsContext(bitmap.Get(), &graphics_);
  }
  ~Surface() {
    if (graphics_ != nullptr) GdipDeleteGraphics(graphics_);
  }
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  bool Usable() const { return status_ == Gdiplus::Ok && graphics_ != nullptr; }
  Gdiplus::GpGraphics* Get() const { return graphics_; }

 private:
  Gdiplus::GpGraphics* graphics_ = nullptr;
  Gdiplus::GpStatus status_;
};

bool ChooseQuality(Gdiplus::GpGraphics* graphics) {
  return GdipSetCompositingMode(graphics, Gdiplus::CompositingModeSourceCopy) == Gdiplus::Ok &&
         GdipSetCompositingQuality(graphics, Gdiplus::CompositingQualityHighQuality) ==
             Gdiplus::Ok &&
         GdipSetSmoothingMode(graphics, Gdiplus::SmoothingModeHighQuality) == Gdiplus::Ok &&
         GdipSetInterpolationMode(graphics, Gdiplus::InterpolationModeHighQualityBicubic) ==
             Gdiplus::Ok;
}

}  // namespace

void StartImageScaler() noexcept {
  Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&scalerToken, &input, nullptr);
}

void StopImageScaler() noexcept {
  Gdiplus::GdiplusShutdown(scalerToken);
  scalerToken = 0;
}

bool DrawScaledImage(const std::uint8_t* source, std::int32_t sourceWidth,
                     std::int32_t sourceHeight, std::uint8_t* destination,
                     std::int32_t destinationWidth, std::int32_t destinationHeight,
                     const FitRect& rectangle) noexcept {
  if (scalerToken == 0 || sourceWidth < 1 || sourceHeight < 1 || destinationWidth < 1 ||
      destinationHeight < 1) {
    return false;
  }
  const Bitmap sourceBitmap(source, sourceWidth, sourceHeight);
  if (!sourceBitmap.Usable()) return false;
  std::memset(destination, 0,
              static_cast<std::size_t>(destinationWidth) *
                  static_cast<std::size_t>(destinationHeight) * kBytesPerPixel);
  const Bitmap destinationBitmap(destination, destinationWidth, destinationHeight);
  if (!destinationBitmap.Usable()) return false;
  const Surface surface(destinationBitmap);
  return surface.Usable() && ChooseQuality(surface.Get()) &&
         GdipDrawImageRect(surface.Get(), sourceBitmap.Get(), rectangle.left, rectangle.top,
                           rectangle.width, rectangle.height) == Gdiplus::Ok;
}

}  // namespace mixdecks
