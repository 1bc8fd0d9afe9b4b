#include "tests/pixelconvert/harness/validator.h"

#include <algorithm>
#include <cstring>

#include "tests/pixelconvert/harness/fault_trap.h"
#include "tests/pixelconvert/harness/findings.h"
#include "tests/pixelconvert/harness/random.h"
#include "tests/pixelconvert/reference/reference.h"

namespace mixdecks::proof {
namespace {

// How much of the open memory around a picture is watched.
constexpr std::ptrdiff_t kMargin = 96;

// The fills of source and destination differ.
constexpr std::size_t kDestinationNoise = 1021;

// With a stride of 0 every row is read from the first.
std::size_t SourceRow(std::int32_t stride, std::size_t row) {
  return stride == 0 ? 0 : row;
}

PlacedPicture Put(const GuardedRegion& region, Stride stride, Place place, std::size_t rowBytes,
                  const Picture& picture) {
  const auto height = static_cast<std::int32_t>(picture.source.size());
  PlacedPicture placed;
  placed.stride = StrideBytes(stride, rowBytes);
  placed.rowBytes = rowBytes;
  placed.height = height;
  const Extent extent = ExtentOf(placed.stride, rowBytes, height);
  switch (place) {
    case Place::kAtEnd:
      placed.firstRow = region.End() - extent.behindLast;
      break;
    case Place::kAtBegin:
      placed.firstRow = region.Begin() - extent.first;
      break;
    case Place::kUnaligned:
      placed.firstRow = region.Begin() - extent.first + kMargin + 1 + picture.width * 7 % 15;
      break;
  }
  placed.windowBegin = std::max(placed.firstRow + extent.first - kMargin, region.Begin());
  placed.windowEnd = std::min(placed.firstRow + extent.behindLast + kMargin, region.End());
  return placed;
}

}  // namespace

std::string Describe(const Conversion& conversion) {
  return std::string(conversion.source->name) + " to " + std::string(conversion.destination->name) +
         ", colour space " + std::to_string(conversion.colourSpace);
}

Picture MakePicture(const Conversion& conversion, std::uint32_t width, Rows source) {
  Picture picture = {width, std::move(source), {}};
  for (const auto& row : picture.source) {
    picture.expected.push_back(reference::ConvertRow(
        conversion.source->code, conversion.destination->code, conversion.colourSpace, width, row));
  }
  return picture;
}

Validator::Validator() {
  Grow(std::size_t{1} << 19);
}

void Validator::Grow(std::size_t bytes) {
  if (source_ != nullptr && source_->Size() >= bytes) return;
  source_ = std::make_unique<GuardedRegion>(bytes);
  destination_ = std::make_unique<GuardedRegion>(bytes);
  noise_.resize(source_->Size() + kDestinationNoise);
  Random random(bytes);
  for (std::uint8_t& byte : noise_)
    byte = static_cast<std::uint8_t>(random.Next() >> 40);
  complement_ = noise_;
  for (std::uint8_t& byte : complement_)
    byte = static_cast<std::uint8_t>(~byte);
}

std::string Validator::Check(const Conversion& conversion, const Picture& picture,
                             const Layout& layout) {
  if (conversion.converter == nullptr) return "the lookup gives no converter";
  const std::size_t sourceBytes = reference::SourceRowBytes(conversion.source->code, picture.width);
  const std::size_t destinationBytes =
      reference::DestinationRowBytes(conversion.destination->code, picture.width);
  const std::size_t widest = std::max(sourceBytes, destinationBytes) + 2 * kMargin;
  Grow(widest * (picture.source.size() + 1));

  const PlacedPicture source =
      Put(*source_, layout.sourceStride, layout.sourcePlace, sourceBytes, picture);
  const PlacedPicture destination = Put(*destination_, layout.destinationStride,
                                        layout.destinationPlace, destinationBytes, picture);
  for (const auto* noise : {&noise_, &complement_}) {
    std::string finding = CheckOnce(conversion, picture, source, destination, *noise);
    if (!finding.empty()) return finding;
  }
  return {};
}

std::string Validator::CheckOnce(const Conversion& conversion, const Picture& picture,
                                 const PlacedPicture& source, const PlacedPicture& destination,
                                 const std::vector<std::uint8_t>& noise) {
  expectedSource_.assign(noise.begin(), noise.begin() + source.WindowBytes());
  expectedDestination_.assign(noise.begin() + kDestinationNoise,
                              noise.begin() + kDestinationNoise + destination.WindowBytes());
  std::memcpy(destination.windowBegin, expectedDestination_.data(), expectedDestination_.size());
  for (std::size_t row = 0; row < picture.source.size(); ++row) {
    const auto& from = picture.source[SourceRow(source.stride, row)];
    const auto& to = picture.expected[SourceRow(source.stride, row)];
    std::copy(from.begin(), from.end(), &expectedSource_[0] + source.OffsetOfRow(row));
    std::copy(to.begin(), to.end(), &expectedDestination_[0] + destination.OffsetOfRow(row));
  }
  std::memcpy(source.windowBegin, expectedSource_.data(), expectedSource_.size());

  const std::optional<Fault> fault = RunTrapped([&] {
    conversion.converter(picture.width, destination.height, destination.firstRow,
                         destination.stride, source.firstRow, source.stride);
  });
  if (fault) return DescribeFault(*fault, source, destination);
  if (std::memcmp(source.windowBegin, expectedSource_.data(), expectedSource_.size()) != 0) {
    return "the source was written to";
  }
  if (std::memcmp(destination.windowBegin, expectedDestination_.data(),
                  expectedDestination_.size()) != 0) {
    return DescribeDifference(destination, *conversion.destination, expectedDestination_,
                              noise.data() + kDestinationNoise);
  }
  return {};
}

}  // namespace mixdecks::proof
