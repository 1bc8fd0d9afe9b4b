#include <fmt/format.h>

#include "tools/picture/byte_reader.h"
#include "tools/picture/format_inspectors.h"

namespace mixdecks {
namespace {

constexpr std::uint32_t kOldHeaderBytes = 12;
constexpr std::uint32_t kUncompressed = 0;
constexpr std::uint32_t kBitFields = 3;

std::uint64_t RowBytes(std::uint32_t width, std::uint32_t bitsPerPixel) {
  return (std::uint64_t{width} * bitsPerPixel + 31) / 32 * 4;
}

void CheckCompression(std::uint32_t compression) {
  if (compression == kUncompressed || compression == kBitFields) return;
  throw PictureError("the BMP is compressed", "save it without compression, or as PNG");
}

}  // namespace

PictureHeader InspectBmp(std::span<const std::uint8_t> file) {
  ByteReader reader(file);
  reader.Skip(10);
  const std::uint32_t pixelOffset = reader.Little32();
  const std::uint32_t headerBytes = reader.Little32();
  const bool old = headerBytes == kOldHeaderBytes;
  PictureHeader header;
  header.width = old ? reader.Little16() : reader.Little32();
  const std::uint32_t declaredHeight = old ? reader.Little16() : reader.Little32();
  // A negative height stands for rows from the top down.
  header.height = declaredHeight > 0x80000000u ? 0u - declaredHeight : declaredHeight;
  reader.Skip(2);
  const std::uint16_t bitsPerPixel = reader.Little16();
  if (!old) CheckCompression(reader.Little32());
  if (bitsPerPixel < 1 || bitsPerPixel > 32) {
    throw DamagedPicture(fmt::format("{} bits per pixel", bitsPerPixel));
  }
  header.mode = bitsPerPixel <= 8 ? ColourMode::kIndexed : ColourMode::kRgb;
  if (header.width <= kLargestSide && header.height <= kLargestSide) {
    ByteReader(file).Skip(pixelOffset + RowBytes(header.width, bitsPerPixel) * header.height);
  }
  return header;
}

}  // namespace mixdecks
