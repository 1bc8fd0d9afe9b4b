#include "tools/picture/picture_decoder.h"

#include <fmt/format.h>

#include <cstring>
#include <utility>

#include "tools/picture/picture_error.h"
#include "tools/picture/picture_limits.h"
#include "tools/picture/pnm_file.h"
#include "tools/picture/psd_file.h"
#include "tools/picture/stb_decoder.h"

namespace mixdecks {
namespace {

constexpr const char* kConvertToRgb = "convert it to RGB";

HostDocument DecodeChannels(std::span<const std::uint8_t> file, const PictureHeader& header) {
  switch (header.format) {
    case PictureFormat::kPsd:
      return DecodePsd(file);
    case PictureFormat::kPnm:
      return DecodePnm(file);
    default:
      return DecodeWithStb(file, header);
  }
}

bool HasUsableChannels(ColourMode mode) {
  return mode == ColourMode::kRgb || mode == ColourMode::kGrey || mode == ColourMode::kIndexed;
}

/// A palette in a PSD file would need the decoder to know it; everything else is expanded.
bool CanDecode(const PictureHeader& header) {
  return HasUsableChannels(header.mode) &&
         !(header.format == PictureFormat::kPsd && header.mode == ColourMode::kIndexed);
}

HostDocument EmptyDocument(const PictureHeader& header) {
  HostDocument document;
  document.width = static_cast<std::int32_t>(header.width);
  document.height = static_cast<std::int32_t>(header.height);
  return document;
}

std::uint16_t Sample16(const HostChannel& channel, std::size_t index) {
  std::uint16_t sample;
  std::memcpy(&sample, channel.samples.data() + 2 * index, sizeof sample);
  return sample;
}

/// The host's 16-bit scale ends at 32768.
constexpr std::uint32_t kFull16 = 32768;

constexpr std::uint8_t Narrow(std::uint32_t sample) {
  return static_cast<std::uint8_t>((sample * 255 + kFull16 / 2) / kFull16);
}
static_assert(Narrow(0) == 0 && Narrow(kFull16) == 255 && Narrow(64) == 0 && Narrow(65) == 1);

void ConvertDepth(HostChannel& channel, std::int32_t depth) {
  if (channel.depth == depth) return;
  std::vector<std::byte> converted;
  if (depth == 8) {
    converted.resize(channel.samples.size() / 2);
    for (std::size_t i = 0; i < converted.size(); ++i) {
      converted[i] = std::byte{Narrow(Sample16(channel, i))};
    }
  } else {
    converted.resize(channel.samples.size() * 2);
    for (std::size_t i = 0; i < channel.samples.size(); ++i) {
      const auto full = std::to_integer<std::uint16_t>(channel.samples[i]);
      const std::uint16_t sample = HostSample16(static_cast<std::uint16_t>(full * 257));
      std::memcpy(converted.data() + 2 * i, &sample, sizeof sample);
    }
  }
  channel.samples = std::move(converted);
  channel.depth = depth;
}

template <typename Operation>
void ForEachChannel(HostDocument& document, Operation operation) {
  for (HostChannel& channel : document.composite)
    operation(channel);
  if (document.transparency) operation(*document.transparency);
  for (HostChannel& channel : document.extraAlpha)
    operation(channel);
}

void CountPlanes(HostDocument& document) {
  document.planes = static_cast<std::int16_t>(
      document.composite.size() + (document.transparency ? 1 : 0) + document.extraAlpha.size());
}

}  // namespace

Picture DecodePicture(std::span<const std::uint8_t> file) {
  const PictureHeader header = InspectPicture(file);
  Picture picture{header.format, header.orientation, EmptyDocument(header)};
  HostDocument& document = picture.document;
  if (CanDecode(header)) {
    CheckArea(header);
    document = DecodeChannels(file, header);
  }
  // A decoder that expands grey to RGB gives three times the same channel.
  if (header.mode == ColourMode::kGrey && document.composite.size() > 1) {
    document.composite.resize(1);
  }
  document.imageMode = static_cast<std::int16_t>(header.mode);
  document.depth = static_cast<std::int16_t>(header.depth);
  CountPlanes(document);
  return picture;
}

void ConvertToRgb(HostDocument& document) {
  const auto mode = static_cast<ColourMode>(document.imageMode);
  if (document.composite.empty()) {
    throw PictureError(
        fmt::format("a picture in {} mode cannot be converted here", ColourModeName(mode)),
        kConvertToRgb + std::string(" in an image editor"));
  }
  document.composite.resize(3, HostChannel(document.composite.front()));
  document.imageMode = kImageModeRgb;
  CountPlanes(document);
}

void ConvertDepth(HostDocument& document, std::int16_t depth) {
  ForEachChannel(document, [depth](HostChannel& channel) { ConvertDepth(channel, depth); });
  document.depth = depth;
}

void AddAlphaChannel(HostDocument& document, HostDocument greyscale) {
  if (static_cast<ColourMode>(greyscale.imageMode) != ColourMode::kGrey) {
    throw PictureError("an alpha channel is made of a greyscale picture, and this one is not",
                       "convert it to greyscale");
  }
  if (greyscale.width != document.width || greyscale.height != document.height) {
    throw PictureError(fmt::format("it is {} x {} and the picture is {} x {}", greyscale.width,
                                   greyscale.height, document.width, document.height),
                       "scale it to the picture's size");
  }
  ConvertDepth(greyscale, document.depth);
  document.extraAlpha.push_back(std::move(greyscale.composite.front()));
  CountPlanes(document);
}

}  // namespace mixdecks
