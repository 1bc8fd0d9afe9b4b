#include "tests/pixelconvert/reference/rgb_rows.h"

#include <stdexcept>

#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::reference {
namespace {

// Places of the samples among a pixel's bytes; `a` is -1 where there is no alpha.
struct BytePlaces {
  std::size_t bytes;
  std::size_t r, g, b;
  int a;
};

BytePlaces PlacesOf(PixelFormatCode code) {
  switch (code) {
    case kArgb32:
      return {4, 1, 2, 3, 0};
    case kBgra:
      return {4, 2, 1, 0, 3};
    case kBgrx:
      return {4, 2, 1, 0, -1};
    case kRgba:
      return {4, 0, 1, 2, 3};
    case kRgb3:
      return {3, 0, 1, 2, -1};
    default:
      throw std::invalid_argument("not an 8-bit RGB format");
  }
}

// Places of the samples in a 32-bit word.
struct BitPlaces {
  int r, g, b;
  bool bigEndian;
  std::uint32_t constantBits;
};

BitPlaces BitPlacesOf(PixelFormatCode code) {
  switch (code) {
    case kR210Video:
    case kR210Full:
      return {20, 10, 0, true, 0};
    case kR10BigVideo:
    case kR10BigFull:
      return {22, 12, 2, true, 0};
    case kR10LittleVideo:
    case kR10LittleFull:
      return {22, 12, 2, false, 0};
    case kR10Alpha:
      return {22, 12, 2, true, 3};
    default:
      throw std::invalid_argument("not a 10-bit RGB format");
  }
}

// Byte n of a word counted from its least significant end, as it lies in memory.
std::size_t ByteOfWord(std::size_t n, bool bigEndian) {
  return bigEndian ? 3 - n : n;
}

std::vector<Colour> Read8(PixelFormatCode code, std::span<const std::uint8_t> bytes,
                          std::size_t count) {
  const BytePlaces at = PlacesOf(code);
  std::vector<Colour> pixels(count);
  for (std::size_t x = 0; x < count; ++x) {
    const std::uint8_t* pixel = &bytes[x * at.bytes];
    pixels[x] = {pixel[at.r], pixel[at.g], pixel[at.b], at.a < 0 ? 255 : pixel[at.a]};
  }
  return pixels;
}

std::vector<std::uint8_t> Write8(PixelFormatCode code, const std::vector<Colour>& pixels) {
  const BytePlaces at = PlacesOf(code);
  std::vector<std::uint8_t> bytes(pixels.size() * at.bytes);
  for (std::size_t x = 0; x < pixels.size(); ++x) {
    std::uint8_t* pixel = &bytes[x * at.bytes];
    pixel[at.r] = static_cast<std::uint8_t>(pixels[x].r);
    pixel[at.g] = static_cast<std::uint8_t>(pixels[x].g);
    pixel[at.b] = static_cast<std::uint8_t>(pixels[x].b);
    if (at.a >= 0) pixel[at.a] = static_cast<std::uint8_t>(pixels[x].a);
  }
  return bytes;
}

std::vector<Colour> Read10(PixelFormatCode code, std::span<const std::uint8_t> bytes,
                           std::size_t count) {
  const BitPlaces at = BitPlacesOf(code);
  std::vector<Colour> pixels(count);
  for (std::size_t x = 0; x < count; ++x) {
    std::uint32_t word = 0;
    for (std::size_t n = 0; n < 4; ++n) {
      word |= std::uint32_t{bytes[4 * x + ByteOfWord(n, at.bigEndian)]} << (8 * n);
    }
    const auto sample = [word](int shift) { return static_cast<int>((word >> shift) & 1023u); };
    pixels[x] = {sample(at.r), sample(at.g), sample(at.b), 255};
  }
  return pixels;
}

std::vector<std::uint8_t> Write10(PixelFormatCode code, const std::vector<Colour>& pixels) {
  const BitPlaces at = BitPlacesOf(code);
  std::vector<std::uint8_t> bytes(pixels.size() * 4);
  for (std::size_t x = 0; x < pixels.size(); ++x) {
    const std::uint32_t word = static_cast<std::uint32_t>(pixels[x].r) << at.r |
                               static_cast<std::uint32_t>(pixels[x].g) << at.g |
                               static_cast<std::uint32_t>(pixels[x].b) << at.b | at.constantBits;
    for (std::size_t n = 0; n < 4; ++n) {
      bytes[4 * x + ByteOfWord(n, at.bigEndian)] = static_cast<std::uint8_t>(word >> (8 * n));
    }
  }
  return bytes;
}

// A 12-bit row is a stream of samples, least significant bit first, whose bytes `R12B` reverses
// within every four.
std::size_t StreamByte(std::size_t n, bool bigEndian) {
  return n / 4 * 4 + ByteOfWord(n % 4, bigEndian);
}

std::vector<Colour> Read12(PixelFormatCode code, std::span<const std::uint8_t> bytes,
                           std::size_t count) {
  const bool bigEndian = code == kR12Big;
  const auto sample = [&](std::size_t index) {
    const std::size_t bit = 12 * index;
    const int low = bytes[StreamByte(bit / 8, bigEndian)];
    const int high = bytes[StreamByte(bit / 8 + 1, bigEndian)];
    return ((high << 8 | low) >> (bit % 8)) & 4095;
  };
  std::vector<Colour> pixels(count);
  for (std::size_t x = 0; x < count; ++x) {
    pixels[x] = {sample(3 * x), sample(3 * x + 1), sample(3 * x + 2), 255};
  }
  return pixels;
}

std::vector<std::uint8_t> Write12(PixelFormatCode code, const std::vector<Colour>& pixels) {
  const bool bigEndian = code == kR12Big;
  std::vector<std::uint8_t> bytes(DestinationRowBytes(code, pixels.size()));
  const auto put = [&](std::size_t index, int sample) {
    const std::size_t bit = 12 * index;
    const int shifted = sample << (bit % 8);
    std::uint8_t& low = bytes[StreamByte(bit / 8, bigEndian)];
    std::uint8_t& high = bytes[StreamByte(bit / 8 + 1, bigEndian)];
    low = static_cast<std::uint8_t>(low | (shifted & 255));
    high = static_cast<std::uint8_t>(high | (shifted >> 8));
  };
  for (std::size_t x = 0; x < pixels.size(); ++x) {
    put(3 * x, pixels[x].r);
    put(3 * x + 1, pixels[x].g);
    put(3 * x + 2, pixels[x].b);
  }
  return bytes;
}

}  // namespace

std::vector<Colour> ReadRgbRow(PixelFormatCode code, std::span<const std::uint8_t> row,
                               std::size_t count) {
  std::vector<std::uint8_t> bytes(row.begin(), row.end());
  bytes.resize(std::max(row.size(), SourceRowBytes(code, count)), 0);
  switch (FormatOf(code).kind) {
    case Kind::kRgb8:
      return Read8(code, bytes, count);
    case Kind::kRgb10:
      return Read10(code, bytes, count);
    case Kind::kRgb12:
      return Read12(code, bytes, count);
    case Kind::kYuv:
      break;
  }
  throw std::invalid_argument("not an RGB format");
}

std::vector<std::uint8_t> WriteRgbRow(PixelFormatCode code, const std::vector<Colour>& pixels) {
  switch (FormatOf(code).kind) {
    case Kind::kRgb8:
      return Write8(code, pixels);
    case Kind::kRgb10:
      return Write10(code, pixels);
    case Kind::kRgb12:
      return Write12(code, pixels);
    case Kind::kYuv:
      break;
  }
  throw std::invalid_argument("not an RGB format");
}

}  // namespace mixdecks::reference
