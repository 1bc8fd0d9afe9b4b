// The stages between the document's image and the frame, at both common sizes. Bytes per second
// are those of the frame, so that stages compare.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "pixelconvert/pixel_converter.h"
#include "transfer/alpha_lane.h"
#include "transfer/image_scaler.h"
#include "transfer/image_size.h"
#include "transfer/premultiply_alpha.h"
#include "transfer/scale_image.h"
#include "transfer/service_contract.h"

namespace mixdecks {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Size {
  std::int32_t width, height;
};

Size SizeOf(const benchmark::State& state) {
  return state.range(0) == 1080 ? Size{1920, 1080} : Size{3840, 2160};
}

/// A picture with soft alpha, so that no stage has an easy way out.
Bytes Picture(Size size) {
  Bytes picture(ImageBytes(size.width, size.height));
  for (std::size_t i = 0; i < picture.size(); ++i) {
    picture[i] = static_cast<std::uint8_t>(i * 31 + i / 4096 * 7);
  }
  return picture;
}

void CountFrame(benchmark::State& state, Size size) {
  const auto pixels = static_cast<std::int64_t>(PixelCount(size.width, size.height));
  state.SetItemsProcessed(state.iterations() * pixels);
  state.SetBytesProcessed(state.iterations() * pixels * 4);
}

void BM_SetAlphaOpaque(benchmark::State& state) {
  const Size size = SizeOf(state);
  Bytes picture = Picture(size);
  for ([[maybe_unused]] auto iteration : state) {
    SetAlphaOpaque(picture.data(), PixelCount(size.width, size.height));
    benchmark::ClobberMemory();
  }
  CountFrame(state, size);
}

/// From a picture of 7/5 the size; the argument behind the height says whether it has alpha.
void BM_Scale(benchmark::State& state) {
  const Size size = SizeOf(state);
  const Size from{size.width * 7 / 5, size.height * 7 / 5};
  const bool hasAlpha = state.range(1) != 0;
  Bytes picture = Picture(from);
  Bytes scaled(ImageBytes(size.width, size.height));
  StartImageScaler();
  for ([[maybe_unused]] auto iteration : state) {
    ScaleImage(picture.data(), from.width, from.height, hasAlpha, scaled.data(), size.width,
               size.height);
    benchmark::ClobberMemory();
  }
  StopImageScaler();
  CountFrame(state, size);
}

void BM_Convert(benchmark::State& state) {
  const Size size = SizeOf(state);
  const Bytes picture = Picture(size);
  Bytes frame(picture.size());
  const PixelConverter convert = GetPixelConverter(kBgra, kAy10, kRec709);
  for ([[maybe_unused]] auto iteration : state) {
    convert(static_cast<std::uint32_t>(size.width), size.height, frame.data(), size.width * 4,
            picture.data(), size.width * 4);
    benchmark::ClobberMemory();
  }
  CountFrame(state, size);
}

void BM_Premultiply(benchmark::State& state) {
  const Size size = SizeOf(state);
  Bytes frame = Picture(size);
  for ([[maybe_unused]] auto iteration : state) {
    PremultiplyAlpha(frame.data(), size.width, size.height, kFrameFormatYuva, true);
    benchmark::ClobberMemory();
  }
  CountFrame(state, size);
}

/// As into a frame whose rows are 64 bytes further apart than they are long.
void BM_CopyRows(benchmark::State& state) {
  const Size size = SizeOf(state);
  const Bytes picture = Picture(size);
  const std::size_t rowBytes = ImageBytes(size.width, 1);
  Bytes frame((rowBytes + 64) * static_cast<std::size_t>(size.height));
  for ([[maybe_unused]] auto iteration : state) {
    for (std::size_t row = 0; row < static_cast<std::size_t>(size.height); ++row) {
      std::memcpy(frame.data() + row * (rowBytes + 64), picture.data() + row * rowBytes, rowBytes);
    }
    benchmark::ClobberMemory();
  }
  CountFrame(state, size);
}

BENCHMARK(BM_SetAlphaOpaque)->Arg(1080)->Arg(2160)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Scale)
    ->ArgsProduct({{1080, 2160}, {0, 1}})
    ->ArgNames({"height", "alpha"})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Convert)->Arg(1080)->Arg(2160)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Premultiply)->Arg(1080)->Arg(2160)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CopyRows)->Arg(1080)->Arg(2160)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mixdecks
