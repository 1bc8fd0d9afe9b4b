// Every pair of the conversion library at 1080p and 2160p, beside memcpy of the same bytes.
//
// The yardstick of a pair is a copy that reads and writes as many bytes as the conversion does, in
// the same memory and in turns with it, so that a busy machine slows both. Times are the thread's
// own, and the fastest of the repetitions: what is above it is other programs' work.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "benchmarks/pixelconvert_families.h"
#include "benchmarks/table_reporter.h"
#include "pixelconvert/pixel_converter.h"

namespace mixdecks {
namespace {

struct PictureSize {
  const char* name;
  std::uint32_t width;
  std::uint32_t height;
};

constexpr PictureSize kSizes[] = {{"1080p", 1920, 1080}, {"2160p", 3840, 2160}};

using Bytes = std::vector<std::uint8_t>;

Bytes RandomBytes(std::size_t size) {
  std::mt19937_64 random(size);
  Bytes bytes(size + sizeof(std::uint64_t));
  for (std::size_t i = 0; i < size; i += sizeof(std::uint64_t)) {
    const std::uint64_t value = random();
    std::memcpy(&bytes[i], &value, sizeof(value));
  }
  return bytes;
}

// Seconds of processor time.
template <class Work>
double TimeOf(Work work) {
  const std::clock_t start = std::clock();
  work();
  benchmark::ClobberMemory();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void ConvertPicture(benchmark::State& state, const PixelFormat& source,
                    const PixelFormat& destination, PictureSize size) {
  const std::size_t sourceStride = source.sourceRow.RowBytes(size.width);
  const std::size_t destinationStride = destination.destinationRow.RowBytes(size.width);
  const std::size_t bytes = (sourceStride + destinationStride) * size.height;
  const PixelConverter convert = GetPixelConverter(source.code, destination.code, kRec709);
  const Bytes in = RandomBytes(std::max(sourceStride * size.height, bytes / 2));
  Bytes out(std::max(destinationStride * size.height, bytes / 2));

  double conversion = std::numeric_limits<double>::max();
  double copy = conversion;
  for (auto _ : state) {
    copy = std::min(copy, TimeOf([&] { std::memcpy(out.data(), in.data(), bytes / 2); }));
    const double time = TimeOf([&] {
      convert(size.width, static_cast<std::int32_t>(size.height), out.data(),
              static_cast<std::int32_t>(destinationStride), in.data(),
              static_cast<std::int32_t>(sourceStride));
    });
    conversion = std::min(conversion, time);
    state.SetIterationTime(time);
  }

  const double pixels = static_cast<double>(size.width) * size.height;
  state.counters["ns/pixel"] = conversion * 1e9 / pixels;
  state.counters["GB/s"] = static_cast<double>(bytes) * 1e-9 / conversion;
  state.counters["x memcpy"] = conversion / copy;
  state.counters["goal"] = GoalOf(source, destination);
}

void RegisterPairs() {
  for (const PixelFormat& source : kPixelFormats) {
    for (const PixelFormat& destination : kPixelFormats) {
      if (!IsSupportedPair(source.code, destination.code)) continue;
      for (const PictureSize& size : kSizes) {
        const std::string pair = std::string(source.name) + " > " + std::string(destination.name);
        benchmark::RegisterBenchmark((pair + "/" + size.name).c_str(),
                                     [&source, &destination, size](benchmark::State& state) {
                                       ConvertPicture(state, source, destination, size);
                                     })
            ->UseManualTime()
            ->MinTime(0.1);
      }
    }
  }
}

}  // namespace
}  // namespace mixdecks

int main(int count, char** arguments) {
  mixdecks::RegisterPairs();
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  mixdecks::TableReporter table;
  const std::size_t pairs = benchmark::RunSpecifiedBenchmarks(&table);
  benchmark::Shutdown();
  return pairs == 0 ? 1 : 0;
}
