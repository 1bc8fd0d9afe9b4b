#include "tools/picture/psd_layout.h"

#include <fmt/format.h>

#include "tools/picture/byte_reader.h"
#include "tools/picture/format_inspectors.h"

namespace mixdecks {
namespace {

constexpr std::uint16_t kVersionInfoResource = 1057;
constexpr std::uint16_t kLargestChannelCount = 56;

void ReadHeader(ByteReader& reader, PsdLayout& layout) {
  reader.Skip(4);
  if (reader.Big16() != 1) {
    throw PictureError("this kind of PSD file cannot be read", "save it as an ordinary PSD");
  }
  reader.Skip(6);
  layout.channels = reader.Big16();
  layout.header.height = reader.Big32();
  layout.header.width = reader.Big32();
  const std::uint16_t depth = reader.Big16();
  layout.header.mode = static_cast<ColourMode>(reader.Big16());
  if (layout.channels < 1 || layout.channels > kLargestChannelCount) {
    throw DamagedPicture(fmt::format("it declares {} channels", layout.channels));
  }
  const bool bitmap = layout.header.mode == ColourMode::kBitmap && depth == 1;
  if (depth != 8 && depth != 16 && !bitmap) {
    throw PictureError(fmt::format("the picture has {} bits per channel", depth),
                       "convert it to 8 or 16 bits per channel");
  }
  layout.header.depth = depth == 16 ? 16 : 8;
}

/// A file saved without compatibility holds a white page in place of the merged picture.
void CheckMergedPicture(ByteReader resources) {
  while (resources.Remaining() > 0) {
    resources.Skip(4);
    const std::uint16_t id = resources.Big16();
    const std::uint8_t nameLength = resources.Byte();
    resources.Skip(nameLength + (nameLength % 2 == 0 ? 1u : 0u));
    const std::uint32_t length = resources.Big32();
    ByteReader data(resources.Take(length));
    if (length % 2 != 0 && resources.Remaining() > 0) resources.Skip(1);
    if (id != kVersionInfoResource) continue;
    data.Skip(4);
    if (data.Byte() == 0) {
      throw PictureError("the PSD was saved without its merged picture",
                         "save it again with compatibility switched on");
    }
  }
}

/// A negative count of layers says that the merged picture's first alpha is its transparency.
bool CountIsNegative(ByteReader layerInfo) {
  return layerInfo.Remaining() >= 2 && (layerInfo.Big16() & 0x8000) != 0;
}

/// Documents of 16 bits keep their layers in a tagged block behind the usual place.
bool FindTransparencyInBlocks(ByteReader reader) {
  reader.Skip(reader.Big32());
  while (reader.Remaining() >= 12) {
    reader.Skip(4);
    const auto key = reader.Take(4);
    const std::uint32_t length = reader.Big32();
    ByteReader data(reader.Take(length));
    if (StartsWith(key, "Lr16") || StartsWith(key, "Layr")) return CountIsNegative(data);
    const std::uint32_t padding = (4 - length % 4) % 4;
    if (reader.Remaining() < padding) return false;
    reader.Skip(padding);
  }
  return false;
}

bool FindTransparency(ByteReader layers) {
  if (layers.Remaining() < 4) return false;
  const std::uint32_t length = layers.Big32();
  if (length > 0) return CountIsNegative(ByteReader(layers.Take(length)));
  return layers.Remaining() >= 4 && FindTransparencyInBlocks(layers);
}

std::uint64_t PictureBytes(const PsdLayout& layout) {
  if (!layout.packed) return layout.RowBytes() * layout.Rows();
  ByteReader lengths(layout.picture);
  std::uint64_t bytes = 2 * layout.Rows();
  for (std::uint64_t row = 0; row < layout.Rows(); ++row)
    bytes += lengths.Big16();
  return bytes;
}

}  // namespace

PsdLayout ReadPsdLayout(std::span<const std::uint8_t> file) {
  ByteReader reader(file);
  PsdLayout layout;
  ReadHeader(reader, layout);
  reader.Skip(reader.Big32());  // palette
  CheckMergedPicture(ByteReader(reader.Take(reader.Big32())));
  layout.hasTransparency = FindTransparency(ByteReader(reader.Take(reader.Big32())));
  const std::uint16_t compression = reader.Big16();
  if (compression > 1) {
    throw PictureError("the PSD's picture is compressed in an unknown way", "save it as PNG");
  }
  layout.packed = compression == 1;
  layout.picture = reader.Take(reader.Remaining());
  const bool sane = layout.header.width <= kLargestSide && layout.header.height <= kLargestSide;
  if (sane) ByteReader(layout.picture).Skip(PictureBytes(layout));
  return layout;
}

PictureHeader InspectPsd(std::span<const std::uint8_t> file) {
  return ReadPsdLayout(file).header;
}

}  // namespace mixdecks
