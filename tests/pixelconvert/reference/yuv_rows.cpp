#include "tests/pixelconvert/reference/yuv_rows.h"

#include <stdexcept>

#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::reference {
namespace {

std::size_t BytesOfPairs(PixelFormatCode code, std::size_t pairs) {
  return DestinationRowBytes(code, 2 * pairs);
}

// `2vuy` and `v210` are both a stream Cb Y Cr Y of samples: bytes in the one, three to a
// little-endian word in the other.
int StreamSample(PixelFormatCode code, const std::vector<std::uint8_t>& bytes, std::size_t index) {
  if (code == k2vuy) return bytes[index];
  std::uint32_t word = 0;
  for (std::size_t n = 0; n < 4; ++n) {
    word |= std::uint32_t{bytes[4 * (index / 3) + n]} << (8 * n);
  }
  return static_cast<int>((word >> (10 * (index % 3))) & 1023u);
}

void PutStreamSample(PixelFormatCode code, std::vector<std::uint8_t>& bytes, std::size_t index,
                     int sample) {
  if (code == k2vuy) {
    bytes[index] = static_cast<std::uint8_t>(sample);
    return;
  }
  const std::uint32_t bits = static_cast<std::uint32_t>(sample) << (10 * (index % 3));
  for (std::size_t n = 0; n < 4; ++n) {
    std::uint8_t& byte = bytes[4 * (index / 3) + n];
    byte = static_cast<std::uint8_t>(byte | (bits >> (8 * n)));
  }
}

// A pixel of `ay10` is a big-endian word of alpha, chroma and luma.
std::array<int, 3> ReadAy10Word(const std::vector<std::uint8_t>& bytes, std::size_t pixel) {
  std::uint32_t word = 0;
  for (std::size_t n = 0; n < 4; ++n)
    word = word << 8 | bytes[4 * pixel + n];
  const auto field = [word](int shift) { return static_cast<int>((word >> shift) & 1023u); };
  return {field(20), field(10), field(0)};
}

void PutAy10Word(std::vector<std::uint8_t>& bytes, std::size_t pixel, int a, int chroma, int y) {
  const std::uint32_t word = static_cast<std::uint32_t>(a) << 20 |
                             static_cast<std::uint32_t>(chroma) << 10 |
                             static_cast<std::uint32_t>(y);
  for (std::size_t n = 0; n < 4; ++n) {
    bytes[4 * pixel + n] = static_cast<std::uint8_t>(word >> (24 - 8 * n));
  }
}

}  // namespace

std::size_t PairsOfRow(PixelFormatCode code, std::size_t width) {
  switch (code) {
    case k2vuy:
      return (width + 1) / 2;
    case kV210:
      return (width + 5) / 6 * 3;
    case kAy10:
      return (width + 3) / 4 * 2;
    default:
      throw std::invalid_argument("not a YUV format");
  }
}

std::vector<PixelPair> ReadYuvRow(PixelFormatCode code, std::span<const std::uint8_t> row,
                                  std::size_t pairs) {
  std::vector<std::uint8_t> bytes(row.begin(), row.end());
  bytes.resize(std::max(row.size(), BytesOfPairs(code, pairs)), 0);
  std::vector<PixelPair> result(pairs);
  for (std::size_t k = 0; k < pairs; ++k) {
    PixelPair& pair = result[k];
    if (code == kAy10) {
      const auto [a0, c0, y0] = ReadAy10Word(bytes, 2 * k);
      const auto [a1, c1, y1] = ReadAy10Word(bytes, 2 * k + 1);
      pair = {{c0, c1}, {y0, y1}, {a0, a1}};
    } else {
      const auto sample = [&](std::size_t n) { return StreamSample(code, bytes, 4 * k + n); };
      pair = {{sample(0), sample(2)}, {sample(1), sample(3)}, {}};
    }
  }
  return result;
}

std::vector<std::uint8_t> WriteYuvRow(PixelFormatCode code, const std::vector<PixelPair>& pairs) {
  std::vector<std::uint8_t> bytes(BytesOfPairs(code, pairs.size()));
  for (std::size_t k = 0; k < pairs.size(); ++k) {
    const PixelPair& pair = pairs[k];
    if (code == kAy10) {
      PutAy10Word(bytes, 2 * k, pair.a[0], pair.chroma.cb, pair.y[0]);
      PutAy10Word(bytes, 2 * k + 1, pair.a[1], pair.chroma.cr, pair.y[1]);
    } else {
      PutStreamSample(code, bytes, 4 * k, pair.chroma.cb);
      PutStreamSample(code, bytes, 4 * k + 1, pair.y[0]);
      PutStreamSample(code, bytes, 4 * k + 2, pair.chroma.cr);
      PutStreamSample(code, bytes, 4 * k + 3, pair.y[1]);
    }
  }
  return bytes;
}

}  // namespace mixdecks::reference
