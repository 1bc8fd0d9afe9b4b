#include "tools/memory_host/host_document.h"

#include <cstring>
#include <stdexcept>

namespace mixdecks {
namespace {

constexpr std::int32_t kLongestSide = 32767;
constexpr std::size_t kLanes = 4;
constexpr std::size_t kAlphaLane = 3;

/// Passes images whose sizes a host can express and whose samples are all there.
void CheckPixels(std::int32_t width, std::int32_t height, std::size_t samples,
                 std::size_t samplesPerPixel) {
  if (width < 0 || height < 0 || width > kLongestSide || height > kLongestSide) {
    throw std::invalid_argument("a document is 0 to 32767 pixels wide and high");
  }
  const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  if (samples != pixels * samplesPerPixel) {
    throw std::invalid_argument("the samples do not fill the document");
  }
}

std::uint8_t ToHost(std::uint8_t sample) noexcept {
  return sample;
}
std::uint16_t ToHost(std::uint16_t sample) noexcept {
  return HostSample16(sample);
}

/// A channel from every `step`th sample, `first` being the first of them.
template <typename Sample>
HostChannel ChannelOf(std::span<const Sample> samples, std::size_t first, std::size_t step,
                      std::int32_t width, std::int32_t height) {
  HostChannel channel;
  channel.bounds = {0, 0, height, width};
  channel.depth = 8 * static_cast<std::int32_t>(sizeof(Sample));
  channel.samples.resize(samples.size() / step * sizeof(Sample));
  std::byte* out = channel.samples.data();
  for (std::size_t i = first; i < samples.size(); i += step, out += sizeof(Sample)) {
    const Sample sample = ToHost(samples[i]);
    std::memcpy(out, &sample, sizeof(Sample));
  }
  return channel;
}

template <typename Sample>
HostDocument DocumentOf(std::span<const Sample> rgba, std::int32_t width, std::int32_t height,
                        bool withTransparency) {
  CheckPixels(width, height, rgba.size(), kLanes);
  HostDocument document;
  document.width = width;
  document.height = height;
  document.depth = static_cast<std::int16_t>(8 * sizeof(Sample));
  for (std::size_t lane = 0; lane < kAlphaLane; ++lane) {
    document.composite.push_back(ChannelOf(rgba, lane, kLanes, width, height));
  }
  if (withTransparency) {
    document.transparency = ChannelOf(rgba, kAlphaLane, kLanes, width, height);
  }
  return document;
}

}  // namespace

HostChannel ChannelOfSamples8(std::span<const std::uint8_t> samples, std::int32_t width,
                              std::int32_t height) {
  CheckPixels(width, height, samples.size(), 1);
  return ChannelOf(samples, 0, 1, width, height);
}

HostChannel ChannelOfSamples16(std::span<const std::uint16_t> samples, std::int32_t width,
                               std::int32_t height) {
  CheckPixels(width, height, samples.size(), 1);
  return ChannelOf(samples, 0, 1, width, height);
}

HostDocument DocumentOfRgba8(std::span<const std::uint8_t> rgba, std::int32_t width,
                             std::int32_t height, bool withTransparency) {
  return DocumentOf(rgba, width, height, withTransparency);
}

HostDocument DocumentOfRgba16(std::span<const std::uint16_t> rgba, std::int32_t width,
                              std::int32_t height, bool withTransparency) {
  return DocumentOf(rgba, width, height, withTransparency);
}

}  // namespace mixdecks
