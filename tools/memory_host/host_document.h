// What a host has open, as plain data: the channels of a document and how to make them of an image.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/export_record.h"

namespace mixdecks {

/// One channel of a document. The plain fields let a test hand out what no sound host would.
struct HostChannel {
  HostRect32 bounds{};
  std::int32_t depth = 8;   ///< bits per sample
  std::int32_t levels = 1;  ///< what the host gives as count of levels
  /// Rows of `bounds` without gaps between them, each rounded up to whole bytes; samples of 16 bits
  /// in the byte order of this machine and from 0 to 32768. Empty: every sample is zero.
  std::vector<std::byte> samples{};
};

/// A document as the host describes it in its record.
struct HostDocument {
  std::int32_t width = 0;   ///< pixels, 0 to 32767
  std::int32_t height = 0;  ///< pixels, 0 to 32767
  std::int16_t depth = 8;   ///< bits per sample
  std::int16_t planes = 3;
  std::int16_t imageMode = kImageModeRgb;
  std::string fileName = "Untitled-1.psd";  ///< in the host's code page; cut after 255 bytes
  std::vector<HostChannel> composite{};     ///< red, green, blue
  std::optional<HostChannel> transparency{};
  std::vector<HostChannel> extraAlpha{};
};

/// The host's 16-bit scale: 0 to 65535 becomes 0 to 32768, rounded to nearest.
constexpr std::uint16_t HostSample16(std::uint16_t full) noexcept {
  return static_cast<std::uint16_t>((std::uint32_t{full} * 32768 + 32767) / 65535);
}

/// A channel of 8 bits that covers the whole document, from width x height samples.
HostChannel ChannelOfSamples8(std::span<const std::uint8_t> samples, std::int32_t width,
                              std::int32_t height);
/// A channel of 16 bits, from width x height samples of 0 to 65535.
HostChannel ChannelOfSamples16(std::span<const std::uint16_t> samples, std::int32_t width,
                               std::int32_t height);

/// An RGB document of 8 bits from width x height x 4 samples: red, green, blue, alpha. Alpha
/// becomes the merged transparency, or is left out. Throws `std::invalid_argument` when the sizes
/// are outside 0 to 32767 or do not fit the samples.
HostDocument DocumentOfRgba8(std::span<const std::uint8_t> rgba, std::int32_t width,
                             std::int32_t height, bool withTransparency);
/// The same in 16 bits, from samples of 0 to 65535.
HostDocument DocumentOfRgba16(std::span<const std::uint16_t> rgba, std::int32_t width,
                              std::int32_t height, bool withTransparency);

}  // namespace mixdecks
