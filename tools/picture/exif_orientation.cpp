#include "tools/picture/exif_orientation.h"

#include "tools/picture/byte_reader.h"
#include "tools/picture/format_inspectors.h"

namespace mixdecks {
namespace {

constexpr int kAsItLies = 1;
constexpr int kLastOrientation = 8;
constexpr std::uint16_t kOrientationTag = 0x0112;

std::uint16_t Number16(ByteReader& reader, bool little) {
  return little ? reader.Little16() : reader.Big16();
}

int FindOrientation(std::span<const std::uint8_t> exif) {
  const bool little = StartsWith(exif, "II");
  ByteReader header(exif);
  header.Skip(4);
  ByteReader directory(exif);
  directory.Skip(little ? header.Little32() : header.Big32());
  for (int entries = Number16(directory, little); entries > 0; --entries) {
    ByteReader entry(directory.Take(12));
    if (Number16(entry, little) != kOrientationTag) continue;
    entry.Skip(6);  // the value's type and count
    const int orientation = Number16(entry, little);
    return orientation <= kLastOrientation && orientation > 0 ? orientation : kAsItLies;
  }
  return kAsItLies;
}

}  // namespace

int ExifOrientation(std::span<const std::uint8_t> exif) {
  try {
    return FindOrientation(exif);
  } catch (const TruncatedPicture&) {
    return kAsItLies;
  }
}

}  // namespace mixdecks
