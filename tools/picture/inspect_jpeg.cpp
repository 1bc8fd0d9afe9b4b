#include "tools/picture/byte_reader.h"
#include "tools/picture/exif_orientation.h"
#include "tools/picture/format_inspectors.h"

namespace mixdecks {
namespace {

using namespace std::string_view_literals;

constexpr std::uint8_t kFrameFirst = 0xC0;
constexpr std::uint8_t kHuffmanTables = 0xC4;
constexpr std::uint8_t kExtension = 0xC8;
constexpr std::uint8_t kArithmeticTables = 0xCC;
constexpr std::uint8_t kFrameLast = 0xCF;
constexpr std::uint8_t kRestartFirst = 0xD0;
constexpr std::uint8_t kRestartLast = 0xD7;
constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kEndOfImage = 0xD9;
constexpr std::uint8_t kStartOfScan = 0xDA;
constexpr std::uint8_t kExifSegment = 0xE1;
constexpr std::uint8_t kTemporary = 0x01;

constexpr std::string_view kExifSignature = "Exif\0\0"sv;

bool IsFrame(std::uint8_t marker) {
  return marker >= kFrameFirst && marker <= kFrameLast && marker != kHuffmanTables &&
         marker != kExtension && marker != kArithmeticTables;
}

bool HasNoLength(std::uint8_t marker) {
  return (marker >= kRestartFirst && marker <= kStartOfImage) || marker == kTemporary;
}

ColourMode ModeOf(int components) {
  switch (components) {
    case 1:
      return ColourMode::kGrey;
    case 3:
      return ColourMode::kRgb;
    case 4:
      return ColourMode::kCmyk;
    default:
      return ColourMode::kMultichannel;
  }
}

PictureHeader ReadFrame(std::span<const std::uint8_t> segment) {
  ByteReader reader(segment);
  PictureHeader header;
  if (reader.Byte() != 8) {
    throw PictureError("the JPEG does not have 8 bits per sample", "save it with 8 bits");
  }
  header.height = reader.Big16();
  header.width = reader.Big16();
  header.mode = ModeOf(reader.Byte());
  return header;
}

/// A table has a code of 1 to 16 bits for each of at most 256 symbols; the decoder relies on it.
void CheckHuffmanTables(std::span<const std::uint8_t> segment) {
  ByteReader reader(segment);
  while (reader.Remaining() > 0) {
    reader.Skip(1);
    std::uint32_t symbols = 0;
    for (const std::uint8_t codesOfLength : reader.Take(16))
      symbols += codesOfLength;
    if (symbols > 256) throw DamagedPicture("a code table has too many symbols");
    reader.Skip(symbols);
  }
}

/// The next marker, past fill bytes, or past a scan's data with its stuffed zeros and restarts.
std::uint8_t NextMarker(ByteReader& reader, bool insideScan) {
  for (;;) {
    if (reader.Byte() != 0xFF) {
      if (!insideScan) throw DamagedPicture("bytes between its segments");
      continue;
    }
    std::uint8_t marker = reader.Byte();
    while (marker == 0xFF)
      marker = reader.Byte();
    const bool data = marker == 0 || (marker >= kRestartFirst && marker <= kRestartLast);
    if (!(insideScan && data)) return marker;
  }
}

}  // namespace

PictureHeader InspectJpeg(std::span<const std::uint8_t> file) {
  ByteReader reader(file);
  reader.Skip(2);
  PictureHeader header;
  int orientation = header.orientation;
  bool frameSeen = false;
  bool insideScan = false;
  for (;;) {
    const std::uint8_t marker = NextMarker(reader, insideScan);
    if (marker == kEndOfImage) break;
    if (HasNoLength(marker)) continue;
    const std::uint16_t length = reader.Big16();
    if (length < 2) throw DamagedPicture("a segment without a length");
    const auto segment = reader.Take(length - 2u);
    if (marker == kHuffmanTables) CheckHuffmanTables(segment);
    if (marker == kExifSegment && StartsWith(segment, kExifSignature)) {
      orientation = ExifOrientation(segment.subspan(kExifSignature.size()));
    }
    if (IsFrame(marker)) {
      header = ReadFrame(segment);
      frameSeen = true;
    }
    insideScan = marker == kStartOfScan;
    if (insideScan && !frameSeen) throw DamagedPicture("picture data before the frame header");
  }
  if (!frameSeen) throw DamagedPicture("there is no picture in it");
  header.orientation = orientation;
  return header;
}

}  // namespace mixdecks
