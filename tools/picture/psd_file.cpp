#include "tools/picture/psd_file.h"

#include <algorithm>
#include <utility>

#include "tools/picture/byte_reader.h"
#include "tools/picture/psd_layout.h"
#include "tools/picture/samples.h"

namespace mixdecks {
namespace {

/// Unpacks one row: a count byte n, then n + 1 bytes, or one byte to repeat 257 - n times.
void UnpackRow(ByteReader packed, std::span<std::uint8_t> row) {
  while (!row.empty()) {
    const std::size_t n = packed.Byte();
    if (n == 128) continue;
    const std::size_t count = n < 128 ? n + 1 : 257 - n;
    if (count > row.size()) throw DamagedPicture("a packed row is too long");
    if (n < 128) {
      std::ranges::copy(packed.Take(count), row.begin());
    } else {
      std::ranges::fill(row.first(count), packed.Byte());
    }
    row = row.subspan(count);
  }
}

/// Hands out the channels' bytes one after the other.
class ChannelSource {
 public:
  explicit ChannelSource(const PsdLayout& layout)
      : layout_(layout), lengths_(layout.picture), rows_(layout.picture) {
    if (layout.packed) rows_.Skip(2 * layout.Rows());
  }

  std::vector<std::uint8_t> NextBytes() {
    const auto rowBytes = static_cast<std::size_t>(layout_.RowBytes());
    const std::size_t channelBytes = rowBytes * layout_.header.height;
    if (!layout_.packed) {
      const auto bytes = rows_.Take(channelBytes);
      return {bytes.begin(), bytes.end()};
    }
    std::vector<std::uint8_t> bytes(channelBytes);
    for (std::size_t offset = 0; offset < channelBytes; offset += rowBytes) {
      UnpackRow(ByteReader(rows_.Take(lengths_.Big16())),
                std::span(bytes).subspan(offset, rowBytes));
    }
    return bytes;
  }

 private:
  const PsdLayout& layout_;
  ByteReader lengths_;
  ByteReader rows_;
};

/// Takes the white out of a colour sample that was blended with it. Where nothing of the picture
/// shows there is nothing to find again.
constexpr std::uint32_t RemoveWhite(std::uint32_t blended, std::uint32_t alpha,
                                    std::uint32_t full) {
  if (alpha == 0) return blended;
  const std::uint64_t missing = (std::uint64_t{full - blended} * full + alpha / 2) / alpha;
  return full - static_cast<std::uint32_t>(std::min<std::uint64_t>(missing, full));
}
static_assert(RemoveWhite(255, 128, 255) == 255);
static_assert(RemoveWhite(127, 128, 255) == 0);
static_assert(RemoveWhite(200, 255, 255) == 200);

template <typename Sample>
void RemoveWhite(std::vector<std::vector<Sample>>& channels, std::size_t colours) {
  constexpr std::uint32_t full = Sample(-1);
  const std::vector<Sample>& alpha = channels[colours];
  for (std::size_t colour = 0; colour < colours; ++colour) {
    for (std::size_t i = 0; i < alpha.size(); ++i) {
      Sample& sample = channels[colour][i];
      sample = static_cast<Sample>(RemoveWhite(sample, alpha[i], full));
    }
  }
}

HostChannel ChannelOf(std::span<const std::uint8_t> samples, std::int32_t width,
                      std::int32_t height) {
  return ChannelOfSamples8(samples, width, height);
}

HostChannel ChannelOf(std::span<const std::uint16_t> samples, std::int32_t width,
                      std::int32_t height) {
  return ChannelOfSamples16(samples, width, height);
}

template <typename Sample>
void FillDocument(HostDocument& document, std::vector<std::vector<Sample>> channels,
                  std::size_t colours, bool hasTransparency) {
  if (hasTransparency) RemoveWhite(channels, colours);
  for (std::size_t i = 0; i < channels.size(); ++i) {
    HostChannel channel = ChannelOf(channels[i], document.width, document.height);
    channels[i] = {};
    if (i < colours) {
      document.composite.push_back(std::move(channel));
    } else if (i == colours && hasTransparency) {
      document.transparency = std::move(channel);
    } else {
      document.extraAlpha.push_back(std::move(channel));
    }
  }
}

}  // namespace

HostDocument DecodePsd(std::span<const std::uint8_t> file) {
  const PsdLayout layout = ReadPsdLayout(file);
  const std::size_t colours = layout.header.mode == ColourMode::kGrey ? 1 : 3;
  const auto count = static_cast<std::size_t>(layout.channels);
  if (count < colours) throw DamagedPicture("a colour channel is missing");
  HostDocument document;
  document.width = static_cast<std::int32_t>(layout.header.width);
  document.height = static_cast<std::int32_t>(layout.header.height);
  const bool hasTransparency = layout.hasTransparency && count > colours;
  ChannelSource source(layout);
  if (layout.header.depth == 16) {
    std::vector<std::vector<std::uint16_t>> channels(count);
    for (auto& channel : channels)
      channel = BigEndianSamples(source.NextBytes());
    FillDocument(document, std::move(channels), colours, hasTransparency);
  } else {
    std::vector<std::vector<std::uint8_t>> channels(count);
    for (auto& channel : channels)
      channel = source.NextBytes();
    FillDocument(document, std::move(channels), colours, hasTransparency);
  }
  return document;
}

}  // namespace mixdecks
