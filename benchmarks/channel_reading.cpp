// Reading a document's channels at the click on Export, and what it is measured against: copying
// as many bytes, and scaling an image of that size.
//
// The times of whole readings hold the host's share too: here one copy of every channel.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "host/channel_reader.h"
#include "host/sample_lanes.h"
#include "tools/memory_host/memory_host.h"
#include "transfer/image_scaler.h"

namespace mixdecks {
namespace {

constexpr std::size_t kPixelBytes = 4;

struct Size {
  std::int32_t width, height;
  std::size_t Pixels() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  }
};

Size SizeOf(const benchmark::State& state) {
  const auto height = static_cast<std::int32_t>(state.range(0));
  return {height * 16 / 9, height};
}

void CountPixels(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(SizeOf(state).Pixels()));
}

HostChannel NoiseChannel(Size size, std::int32_t depth) {
  HostChannel channel;
  channel.bounds = {0, 0, size.height, size.width};
  channel.depth = depth;
  channel.samples.resize(size.Pixels() * static_cast<std::size_t>(depth / 8));
  std::uint32_t noise = 1;
  for (std::byte& sample : channel.samples) {
    noise = noise * 1664525 + 1013904223;
    sample = static_cast<std::byte>(noise >> 24);
  }
  return channel;
}

void ReadDocument(benchmark::State& state, std::int32_t depth, bool transparency) {
  const Size size = SizeOf(state);
  HostDocument document{.width = size.width, .height = size.height};
  document.depth = static_cast<std::int16_t>(depth);
  document.composite.assign(3, NoiseChannel(size, depth));
  if (transparency) document.transparency = NoiseChannel(size, depth);
  MemoryHost host(std::move(document));
  for (auto _ : state) {
    HeapBlock image;
    bool hasAlpha = false;
    if (ReadChannelDocument(&host.Record(), image, hasAlpha) != kResultOk) {
      state.SkipWithError("the document cannot be read");
    }
    benchmark::DoNotOptimize(image.Data());
  }
  CountPixels(state);
}

void Spread8(benchmark::State& state) {
  const std::vector<std::uint8_t> samples(SizeOf(state).Pixels(), 1);
  std::vector<std::uint8_t> image(samples.size() * kPixelBytes);
  for (auto _ : state) {
    SpreadSamples8(samples.data(), samples.size(), image.data(), 2);
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

/// What `SpreadSamples8` replaces: one byte stored after the other.
void Spread8ByBytes(benchmark::State& state) {
  const std::vector<std::uint8_t> samples(SizeOf(state).Pixels(), 1);
  std::vector<std::uint8_t> image(samples.size() * kPixelBytes);
  for (auto _ : state) {
    for (std::size_t i = 0; i < samples.size(); ++i)
      image[kPixelBytes * i + 2] = samples[i];
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

void Spread16(benchmark::State& state) {
  const std::vector<std::uint16_t> samples(SizeOf(state).Pixels(), 1);
  std::vector<std::uint8_t> image(samples.size() * kPixelBytes);
  for (auto _ : state) {
    SpreadSamples16(samples.data(), samples.size(), image.data(), 2);
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

void CopyImage(benchmark::State& state) {
  const std::vector<std::uint8_t> source(SizeOf(state).Pixels() * kPixelBytes, 1);
  std::vector<std::uint8_t> image(source.size());
  for (auto _ : state) {
    std::memcpy(image.data(), source.data(), source.size());
    benchmark::ClobberMemory();
  }
  CountPixels(state);
}

/// Into 1920 x 1080 or 3840 x 2160 from an image a little smaller.
void ScaleImageUp(benchmark::State& state) {
  const Size size = SizeOf(state);
  const Size smaller{size.width - 16, size.height - 9};
  const std::vector<std::uint8_t> source(smaller.Pixels() * kPixelBytes, 1);
  std::vector<std::uint8_t> image(size.Pixels() * kPixelBytes);
  const FitRect whole{0, 0, static_cast<float>(size.width), static_cast<float>(size.height)};
  StartImageScaler();
  for (auto _ : state) {
    if (!DrawScaledImage(source.data(), smaller.width, smaller.height, image.data(), size.width,
                         size.height, whole)) {
      state.SkipWithError("the image cannot be scaled");
    }
    benchmark::ClobberMemory();
  }
  StopImageScaler();
  CountPixels(state);
}

void BothSizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1080)->Arg(2160)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(ReadDocument, rgb8, 8, false)->Apply(BothSizes);
BENCHMARK_CAPTURE(ReadDocument, rgba8, 8, true)->Apply(BothSizes);
BENCHMARK_CAPTURE(ReadDocument, rgb16, 16, false)->Apply(BothSizes);
BENCHMARK_CAPTURE(ReadDocument, rgba16, 16, true)->Apply(BothSizes);
BENCHMARK(Spread8)->Apply(BothSizes);
BENCHMARK(Spread8ByBytes)->Apply(BothSizes);
BENCHMARK(Spread16)->Apply(BothSizes);
BENCHMARK(CopyImage)->Apply(BothSizes);
BENCHMARK(ScaleImageUp)->Apply(BothSizes);

}  // namespace
}  // namespace mixdecks
