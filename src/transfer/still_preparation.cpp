#include "transfer/still_preparation.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "pixelconvert/pixel_converter.h"
#include "transfer/alpha_lane.h"
#include "transfer/image_size.h"
#include "transfer/premultiply_alpha.h"
#include "transfer/scale_image.h"
#include "transfer/video_modes.h"

namespace mixdecks {
namespace {

/// The row of the switcher's video mode; null when the mode cannot be read.
const VideoModeInfo* CurrentVideoMode(SwitcherConnection& connection) {
  const WaitLock lock(connection.transferMutex);
  std::uint32_t code = 0;
  if (!connection.switcher || Failed(connection.switcher->GetVideoMode(&code))) return nullptr;
  return FindVideoMode(code);
}

/// Copies the image into the frame row by row: the frame's rows may be further apart, and what
/// lies between them is the service's. Never more rows or bytes than both sides have.
bool CopyRows(const StillImage& image, ITMKSwitcherFrame& frame, void* frameBytes) {
  const auto rowBytes = static_cast<std::ptrdiff_t>(ImageBytes(image.width, 1));
  const unsigned char* source = image.pixels.Data();
  auto* destination = static_cast<unsigned char*>(frameBytes);
  for (std::int32_t row = 0; row < frame.GetHeight() && row < image.height; ++row) {
    const std::ptrdiff_t distance = frame.GetRowBytes();
    if (std::abs(distance) < rowBytes) return false;
    std::memcpy(destination, source, static_cast<std::size_t>(rowBytes));
    destination += distance;
    source += rowBytes;
  }
  return true;
}

TransferError FillFrame(SwitcherConnection& connection, const StillImage& image,
                        std::uint32_t format, ServicePointer<ITMKSwitcherFrame>& frame) {
  const WaitLock lock(connection.transferMutex);
  if (!connection.mediaPool) return TransferError::kStepFailed;
  const HResult created =
      connection.mediaPool->CreateFrame(format, static_cast<std::uint32_t>(image.width),
                                        static_cast<std::uint32_t>(image.height), frame.Receive());
  if (!Delivered(created, frame)) return TransferError::kStepFailed;
  void* bytes = nullptr;
  if (Failed(frame->GetBytes(&bytes)) || bytes == nullptr) return TransferError::kStepFailed;
  return CopyRows(image, *frame.Get(), bytes) ? TransferError::kNone : TransferError::kStepFailed;
}

}  // namespace

TransferError PrepareFrame(SwitcherConnection& connection, StillImage image, bool premultiply,
                           ServicePointer<ITMKSwitcherFrame>& frame) {
  std::uint32_t format = 0;
  TransferError error = FitToVideoMode(connection, image);
  if (error == TransferError::kNone) error = ConvertToFrameFormat(connection, image, format);
  if (error == TransferError::kNone) {
    error = PremultiplyAlpha(image.pixels.Data(), image.width, image.height, format, premultiply);
  }
  if (error == TransferError::kNone) error = FillFrame(connection, image, format, frame);
  return error;
}

TransferError FitToVideoMode(SwitcherConnection& connection, StillImage& image) {
  const VideoModeInfo* mode = CurrentVideoMode(connection);
  if (mode == nullptr) return TransferError::kVideoModeUnreadable;
  const auto width = static_cast<std::int32_t>(mode->width);
  const auto height = static_cast<std::int32_t>(mode->height);
  if (image.width == width && image.height == height) return TransferError::kNone;

  HeapBlock scaled(ImageBytes(width, height));
  if (!scaled) return TransferError::kNoMemory;
  if (!ScaleImage(image.pixels.Data(), image.width, image.height, image.hasAlpha, scaled.Data(),
                  width, height)) {
    return TransferError::kStepFailed;
  }
  image.pixels = std::move(scaled);
  image.width = width;
  image.height = height;
  return TransferError::kNone;
}

TransferError ConvertToFrameFormat(SwitcherConnection& connection, StillImage& image,
                                   std::uint32_t& format) {
  if (!image.hasAlpha) {
    SetAlphaOpaque(image.pixels.Data(), PixelCount(image.width, image.height));
  }
  format = kFrameFormatYuva;
  HeapBlock converted(ImageBytes(image.width, image.height));
  if (!converted) return TransferError::kNoMemory;
  const VideoModeInfo* mode = CurrentVideoMode(connection);
  if (mode == nullptr) return TransferError::kVideoModeUnreadable;
  const PixelConverter convert = GetPixelConverter(kBgra, kAy10, mode->colourSpace);
  if (convert == nullptr) return TransferError::kStepFailed;
  const auto rowBytes = static_cast<std::int32_t>(ImageBytes(image.width, 1));
  convert(static_cast<std::uint32_t>(image.width), image.height, converted.Data(), rowBytes,
          image.pixels.Data(), rowBytes);
  image.pixels = std::move(converted);
  return TransferError::kNone;
}

}  // namespace mixdecks
