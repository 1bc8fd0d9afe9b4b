#include "tests/tools/picture_files.h"

#include <algorithm>
#include <string>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace mixdecks::test {
namespace {

std::uint32_t Crc32(const Bytes& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit)
      crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0u);
  }
  return ~crc;
}

/// A zlib stream that stores its data as it is.
Bytes Stored(const Bytes& data) {
  constexpr std::size_t kBlock = 65535;
  ByteWriter writer;
  writer.Byte(0x78).Byte(0x01);
  for (std::size_t at = 0; at < data.size() || at == 0; at += kBlock) {
    const std::size_t end = std::min(data.size(), at + kBlock);
    const auto length = static_cast<std::uint32_t>(end - at);
    writer.Byte(end == data.size() ? 1 : 0).Little16(length).Little16(~length);
    writer.Raw(Bytes(data.begin() + static_cast<std::ptrdiff_t>(at),
                     data.begin() + static_cast<std::ptrdiff_t>(end)));
  }
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (const std::uint8_t byte : data) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return writer.Big32(b << 16 | a).Done();
}

std::size_t PngLanes(int colourType) {
  switch (colourType) {
    case kPngRgb:
      return 3;
    case kPngRgba:
      return 4;
    default:
      return 1;
  }
}

Bytes FilteredRows(std::size_t rowBytes, const Bytes& samples) {
  Bytes rows;
  for (std::size_t at = 0; rowBytes > 0 && at < samples.size(); at += rowBytes) {
    rows.push_back(0);
    rows.insert(rows.end(), samples.begin() + static_cast<std::ptrdiff_t>(at),
                samples.begin() + static_cast<std::ptrdiff_t>(at + rowBytes));
  }
  return rows;
}

Bytes Palette() {
  Bytes palette;
  for (int i = 0; i < 256; ++i) {
    palette.push_back(static_cast<std::uint8_t>(i));
    palette.push_back(static_cast<std::uint8_t>(255 - i));
    palette.push_back(7);
  }
  return palette;
}

/// Every byte as a literal run of its own, so that runs of both kinds can be told apart.
Bytes PackRow(const Bytes& row) {
  Bytes packed;
  for (std::size_t i = 0; i < row.size();) {
    std::size_t run = 1;
    while (i + run < row.size() && row[i + run] == row[i] && run < 128)
      ++run;
    packed.push_back(static_cast<std::uint8_t>(run == 1 ? 0 : 257 - run));
    packed.push_back(row[i]);
    i += run;
  }
  return packed;
}

void WritePackedPicture(ByteWriter& writer, const PsdRecipe& recipe) {
  const std::size_t rowBytes = recipe.width * static_cast<std::size_t>(recipe.depth / 8);
  Bytes rows;
  for (const Bytes& channel : recipe.channels) {
    for (std::size_t at = 0; at < channel.size(); at += rowBytes) {
      const auto from = channel.begin() + static_cast<std::ptrdiff_t>(at);
      const Bytes packed = PackRow(Bytes(from, from + static_cast<std::ptrdiff_t>(rowBytes)));
      writer.Big16(static_cast<std::uint32_t>(packed.size()));
      rows.insert(rows.end(), packed.begin(), packed.end());
    }
  }
  writer.Raw(rows);
}

Bytes LayerSection(const PsdRecipe& recipe) {
  const std::uint32_t count = recipe.transparency ? 0xFFFF : 1;
  if (recipe.depth == 8) return ByteWriter().Big32(2).Big16(count).Done();
  // No layers in the usual place and no global mask; then the tagged block of 16-bit documents.
  return ByteWriter().Big32(0).Big32(0).Text("8BIMLr16").Big32(2).Big16(count).Done();
}

}  // namespace

ByteWriter& ByteWriter::Text(std::string_view text) {
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  return *this;
}

ByteWriter& ByteWriter::Raw(const Bytes& bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

ByteWriter& ByteWriter::Byte(std::uint32_t value) {
  bytes_.push_back(static_cast<std::uint8_t>(value));
  return *this;
}

ByteWriter& ByteWriter::Big16(std::uint32_t value) {
  return Byte(value >> 8).Byte(value);
}
ByteWriter& ByteWriter::Big32(std::uint32_t value) {
  return Big16(value >> 16).Big16(value);
}
ByteWriter& ByteWriter::Little16(std::uint32_t value) {
  return Byte(value).Byte(value >> 8);
}
ByteWriter& ByteWriter::Little32(std::uint32_t value) {
  return Little16(value).Little16(value >> 16);
}

Bytes PngChunk(std::string_view type, const Bytes& data) {
  const Bytes checked = ByteWriter().Text(type).Raw(data).Done();
  return ByteWriter()
      .Big32(static_cast<std::uint32_t>(data.size()))
      .Raw(checked)
      .Big32(Crc32(checked))
      .Done();
}

Bytes PngFile(std::uint32_t width, std::uint32_t height, int colourType, int depth,
              const Bytes& samples) {
  const std::size_t rowBytes = width * PngLanes(colourType) * static_cast<std::size_t>(depth / 8);
  const Bytes header = ByteWriter()
                           .Big32(width)
                           .Big32(height)
                           .Byte(static_cast<std::uint32_t>(depth))
                           .Byte(static_cast<std::uint32_t>(colourType))
                           .Byte(0)
                           .Byte(0)
                           .Byte(0)
                           .Done();
  ByteWriter writer;
  writer.Text("\x89PNG\r\n\x1A\n").Raw(PngChunk("IHDR", header));
  if (colourType == kPngIndexed) writer.Raw(PngChunk("PLTE", Palette()));
  writer.Raw(PngChunk("IDAT", Stored(FilteredRows(rowBytes, samples))));
  return writer.Raw(PngChunk("IEND", {})).Done();
}

Bytes PsdFile(const PsdRecipe& recipe) {
  ByteWriter writer;
  writer.Text("8BPS").Big16(1).Big32(0).Big16(0);
  writer.Big16(static_cast<std::uint32_t>(recipe.channels.size()));
  writer.Big32(recipe.height).Big32(recipe.width);
  writer.Big16(static_cast<std::uint32_t>(recipe.depth))
      .Big16(static_cast<std::uint32_t>(recipe.mode));
  writer.Big32(0);  // palette
  const Bytes version = ByteWriter()
                            .Text("8BIM")
                            .Big16(1057)
                            .Big16(0)
                            .Big32(5)
                            .Big32(1)
                            .Byte(recipe.mergedPicture ? 1 : 0)
                            .Byte(0)
                            .Done();
  writer.Big32(static_cast<std::uint32_t>(version.size())).Raw(version);
  const Bytes layers = LayerSection(recipe);
  writer.Big32(static_cast<std::uint32_t>(layers.size())).Raw(layers);
  writer.Big16(recipe.packed ? 1 : 0);
  if (recipe.packed) {
    WritePackedPicture(writer, recipe);
  } else {
    for (const Bytes& channel : recipe.channels)
      writer.Raw(channel);
  }
  return writer.Done();
}

Bytes BmpFile(std::uint32_t width, std::uint32_t height, const Bytes& rgb) {
  const std::uint32_t rowBytes = (width * 3 + 3) / 4 * 4;
  ByteWriter writer;
  writer.Text("BM").Little32(54 + rowBytes * height).Little32(0).Little32(54);
  writer.Little32(40).Little32(width).Little32(height).Little16(1).Little16(24);
  for (int i = 0; i < 6; ++i)
    writer.Little32(0);
  for (std::uint32_t row = height; row-- > 0;) {
    for (std::uint32_t x = 0; x < width; ++x) {
      const std::size_t at = (std::size_t{row} * width + x) * 3;
      writer.Byte(rgb[at + 2]).Byte(rgb[at + 1]).Byte(rgb[at]);
    }
    for (std::uint32_t gap = width * 3; gap < rowBytes; ++gap)
      writer.Byte(0);
  }
  return writer.Done();
}

Bytes PnmFile(char kind, std::uint32_t width, std::uint32_t height, const Bytes& samples) {
  return ByteWriter()
      .Text("P")
      .Byte(static_cast<std::uint32_t>(kind))
      .Text("\n# made for a test\n")
      .Text(std::to_string(width))
      .Text(" ")
      .Text(std::to_string(height))
      .Text("\n255\n")
      .Raw(samples)
      .Done();
}

Bytes JpegFile(int width, int height, const Bytes& rgb) {
  Bytes file;
  const auto write = [](void* context, void* data, int size) {
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    auto& target = *static_cast<Bytes*>(context);
    target.insert(target.end(), bytes, bytes + size);
  };
  stbi_write_jpg_to_func(write, &file, width, height, 3, rgb.data(), 100);
  return file;
}

Bytes EmptyJpegFile(std::uint32_t width, std::uint32_t height, int components) {
  const auto count = static_cast<std::uint32_t>(components);
  ByteWriter writer;
  writer.Big16(0xFFD8).Big16(0xFFC0).Big16(8 + 3 * count).Byte(8).Big16(height).Big16(width);
  writer.Byte(count);
  for (std::uint32_t i = 1; i <= count; ++i)
    writer.Byte(i).Byte(0x11).Byte(0);
  writer.Big16(0xFFDA).Big16(6 + 2 * count).Byte(count);
  for (std::uint32_t i = 1; i <= count; ++i)
    writer.Byte(i).Byte(0);
  return writer.Byte(0).Byte(63).Byte(0).Big16(0xFFD9).Done();
}

}  // namespace mixdecks::test
