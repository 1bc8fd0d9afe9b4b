// Makes picture files in memory, sound ones and crooked ones.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace mixdecks::test {

using Bytes = std::vector<std::uint8_t>;

/// A growing file.
class ByteWriter {
 public:
  ByteWriter& Text(std::string_view text);
  ByteWriter& Raw(const Bytes& bytes);
  ByteWriter& Byte(std::uint32_t value);
  ByteWriter& Big16(std::uint32_t value);
  ByteWriter& Big32(std::uint32_t value);
  ByteWriter& Little16(std::uint32_t value);
  ByteWriter& Little32(std::uint32_t value);
  const Bytes& Done() const noexcept { return bytes_; }

 private:
  Bytes bytes_;
};

// Colour types of a PNG.
inline constexpr int kPngGrey = 0;
inline constexpr int kPngRgb = 2;
inline constexpr int kPngIndexed = 3;
inline constexpr int kPngRgba = 6;

/// A PNG that declares any size and holds `samples` as rows of `width` pixels, as far as there are
/// any; samples of 16 bits are pairs of bytes. An indexed one gets a palette of 256 entries, entry
/// n being n, 255 - n, 7.
Bytes PngFile(std::uint32_t width, std::uint32_t height, int colourType, int depth,
              const Bytes& samples);
/// One chunk of a PNG, checksum included.
Bytes PngChunk(std::string_view type, const Bytes& data);

struct PsdRecipe {
  std::uint32_t width = 1;
  std::uint32_t height = 1;
  int depth = 8;
  int mode = 3;
  std::vector<Bytes> channels;  ///< samples, those of 16 bits as pairs of bytes
  bool packed = false;          ///< run-length packed, in literal runs of one byte each
  bool transparency = false;    ///< the first channel after the colours is transparency
  bool mergedPicture = true;    ///< whether the file says that the merged picture is real
};
Bytes PsdFile(const PsdRecipe& recipe);

/// 24 bits per pixel, from RGB samples, rows top down.
Bytes BmpFile(std::uint32_t width, std::uint32_t height, const Bytes& rgb);

/// P5 or P6 with 8 bits.
Bytes PnmFile(char kind, std::uint32_t width, std::uint32_t height, const Bytes& samples);

Bytes JpegFile(int width, int height, const Bytes& rgb);
/// A complete JPEG of `components` components with nothing in its scan.
Bytes EmptyJpegFile(std::uint32_t width, std::uint32_t height, int components);

}  // namespace mixdecks::test
