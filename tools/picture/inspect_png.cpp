#include <fmt/format.h>

#include <array>

#include "tools/picture/byte_reader.h"
#include "tools/picture/exif_orientation.h"
#include "tools/picture/format_inspectors.h"

namespace mixdecks {
namespace {

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit)
      value = value >> 1 ^ (value & 1 ? 0xEDB88320u : 0u);
    table[i] = value;
  }
  return table;
}

constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

std::uint32_t Crc32(std::span<const std::uint8_t> bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes)
    crc = crc >> 8 ^ kCrcTable[(crc ^ byte) & 255];
  return ~crc;
}

constexpr std::size_t kSignatureBytes = 8;
constexpr std::size_t kTypeBytes = 4;

constexpr int kColourGrey = 0;
constexpr int kColourRgb = 2;
constexpr int kColourIndexed = 3;
constexpr int kColourGreyAlpha = 4;

ColourMode ModeOf(int colourType) {
  switch (colourType) {
    case kColourGrey:
    case kColourGreyAlpha:
      return ColourMode::kGrey;
    case kColourIndexed:
      return ColourMode::kIndexed;
    default:
      return ColourMode::kRgb;
  }
}

int ChannelsOf(int colourType) {
  switch (colourType) {
    case kColourGrey:
      return 1;
    case kColourGreyAlpha:
      return 2;
    case kColourRgb:
      return 3;
    default:
      return 4;
  }
}

PictureHeader ReadHeaderChunk(std::span<const std::uint8_t> chunk) {
  ByteReader reader(chunk);
  PictureHeader header;
  header.width = reader.Big32();
  header.height = reader.Big32();
  header.depth = reader.Byte() == 16 ? 16 : 8;
  const int colourType = reader.Byte();
  header.mode = ModeOf(colourType);
  header.pngChannels = ChannelsOf(colourType);
  return header;
}

}  // namespace

PictureHeader InspectPng(std::span<const std::uint8_t> file) {
  ByteReader reader(file);
  reader.Skip(kSignatureBytes);
  PictureHeader header;
  for (bool first = true;; first = false) {
    const std::uint32_t length = reader.Big32();
    const auto chunk = reader.Take(std::uint64_t{length} + kTypeBytes);
    const std::string_view type(reinterpret_cast<const char*>(chunk.data()), kTypeBytes);
    if (reader.Big32() != Crc32(chunk)) {
      throw DamagedPicture(fmt::format("the checksum of its {} chunk is wrong", type));
    }
    if (first != (type == "IHDR")) throw DamagedPicture("its header is missing or not the first");
    if (first) header = ReadHeaderChunk(chunk.subspan(kTypeBytes));
    if (type == "eXIf") header.orientation = ExifOrientation(chunk.subspan(kTypeBytes));
    if (type == "IEND") return header;
  }
}

}  // namespace mixdecks
