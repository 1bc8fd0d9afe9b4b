#include "host/channel_reader.h"

#include <iterator>
#include <optional>

#include "host/sample_lanes.h"

namespace mixdecks {
namespace {

constexpr std::int32_t kLevel = 0;  // the full size
constexpr std::int64_t kPixelBytes = 4;
constexpr std::int64_t kLargestBlock = INT32_MAX;

/// The merged channels in the order of the host's list.
constexpr Lane kCompositeLanes[] = {Lane::kRed, Lane::kGreen, Lane::kBlue};
constexpr std::size_t kCompositeCount = std::size(kCompositeLanes);

/// Lanes that hold something after so many composite channels, as a mask over a pixel.
constexpr std::uint32_t kLanesRead[kCompositeCount] = {0, 0x00FF0000, 0x00FFFF00};

/// The channel port suite, from the host's basic suite. It is given back in every case, also when
/// the host refused it: a host may count the asking.
class SuiteReference {
 public:
  explicit SuiteReference(const HostBasicSuite* basicSuite) : basicSuite_(basicSuite) {
    if (!HasEntries()) return;
    const void* suite = nullptr;
    const std::int32_t result =
        basicSuite_->acquireSuite(kChannelPortsSuiteName, kChannelPortsSuiteVersion, &suite);
    if (result == 0) suite_ = static_cast<const ChannelPortsSuite*>(suite);
  }
  ~SuiteReference() {
    if (HasEntries()) basicSuite_->releaseSuite(kChannelPortsSuiteName, kChannelPortsSuiteVersion);
  }
  SuiteReference(const SuiteReference&) = delete;
  SuiteReference& operator=(const SuiteReference&) = delete;

  /// Null when the host has no such suite or its table has holes.
  const ChannelPortsSuite* Get() const noexcept {
    const bool whole = suite_ != nullptr && suite_->countLevels != nullptr &&
                       suite_->getDepth != nullptr && suite_->getBounds != nullptr &&
                       suite_->readPixels != nullptr;
    return whole ? suite_ : nullptr;
  }

 private:
  bool HasEntries() const noexcept {
    return basicSuite_ != nullptr && basicSuite_->acquireSuite != nullptr &&
           basicSuite_->releaseSuite != nullptr;
  }

  const HostBasicSuite* basicSuite_;
  const ChannelPortsSuite* suite_ = nullptr;
};

/// A block of `rows` rows of `rowBytes` bytes; none when the sizes are negative or the product is
/// beyond a signed 32-bit number.
HeapBlock AllocateRows(std::int64_t rows, std::int64_t rowBytes) noexcept {
  if (rows < 0 || rowBytes < 0) return {};
  if (rows != 0 && rowBytes > kLargestBlock / rows) return {};
  return HeapBlock(static_cast<std::size_t>(rows * rowBytes));
}

std::size_t PixelCount(std::int32_t width, std::int32_t height) noexcept {
  return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

/// What the host says of a channel before it is read.
struct ChannelShape {
  std::int32_t depth = 0;
  HostRect32 bounds{};
};

std::optional<ChannelShape> AskShape(const ChannelPortsSuite& suite, void* port) {
  std::int32_t levels = 0;
  if (suite.countLevels(port, &levels) != 0 || levels <= 0) return std::nullopt;
  ChannelShape shape;
  if (suite.getDepth(port, kLevel, &shape.depth) != 0) return std::nullopt;
  if (suite.getBounds(port, kLevel, &shape.bounds) != 0) return std::nullopt;
  return shape;
}

bool Covers(const HostRect32& bounds, std::int32_t width, std::int32_t height) noexcept {
  return bounds.left == 0 && bounds.top == 0 && bounds.right == width && bounds.bottom == height;
}

std::int32_t SpreadSamples(const HeapBlock& samples, std::int32_t depth, Lane lane,
                           std::uint8_t* image, std::size_t pixels) noexcept {
  const auto laneIndex = static_cast<std::size_t>(lane);
  switch (depth) {
    case 8:
      SpreadSamples8(samples.Data(), pixels, image, laneIndex);
      return kReadOk;
    case 16:
      SpreadSamples16(reinterpret_cast<const std::uint16_t*>(samples.Data()), pixels, image,
                      laneIndex);
      return kReadOk;
    default:
      return kReadMisfit;
  }
}

/// Reads the merged channels in turn. `readCount` tells how many got into the image. Success also
/// when the list ends early.
std::int32_t ReadComposite(const ChannelPortsSuite& suite, const ChannelDescription* channel,
                           std::uint8_t* image, std::int32_t width, std::int32_t height,
                           std::size_t& readCount) {
  if (channel == nullptr) return kReadHostFailed;
  for (const Lane lane : kCompositeLanes) {
    if (channel == nullptr) break;
    const std::int32_t status = ReadChannelInto(suite, *channel, lane, image, width, height);
    if (status != kReadOk) return status;
    ++readCount;
    channel = channel->next;
  }
  return kReadOk;
}

std::int32_t ReadChannels(const ChannelPortsSuite& suite, const DocumentDescription& document,
                          std::uint8_t* image, std::int32_t width, std::int32_t height,
                          bool& hasAlpha) {
  std::size_t readCount = 0;
  const std::int32_t status =
      ReadComposite(suite, document.mergedComposite, image, width, height, readCount);
  if (readCount == kCompositeCount) {
    return ReadAlphaChannel(suite, document, image, width, height, hasAlpha);
  }
  // Nobody exports what failed; anything else leaves here with defined bytes.
  if (status <= kReadOk) {
    ClearOtherLanes(image, PixelCount(width, height), kLanesRead[readCount]);
  }
  return status;
}

}  // namespace

std::int32_t ReadChannelInto(const ChannelPortsSuite& suite, const ChannelDescription& channel,
                             Lane lane, std::uint8_t* image, std::int32_t width,
                             std::int32_t height) {
  std::optional<ChannelShape> shape = AskShape(suite, channel.readPort);
  if (!shape) return kReadHostFailed;
  if (!Covers(shape->bounds, width, height)) return kReadMisfit;

  // Whole bytes for every row, so that a depth that is refused later cannot overrun the block.
  const std::int64_t rowBits = std::int64_t{width} * shape->depth;
  if (rowBits < 0 || rowBits > INT32_MAX) return kReadNoMemory;
  const HeapBlock samples = AllocateRows(height, (rowBits + 7) / 8);
  if (!samples) return kReadNoMemory;

  PixelDescription pixels = {samples.Data(), static_cast<std::int32_t>(rowBits), shape->depth, 0,
                             shape->depth};
  const std::int32_t result = suite.readPixels(channel.readPort, kLevel, &shape->bounds, &pixels);
  if (result != 0) return result;
  return SpreadSamples(samples, shape->depth, lane, image, PixelCount(width, height));
}

std::int32_t ReadAlphaChannel(const ChannelPortsSuite& suite, const DocumentDescription& document,
                              std::uint8_t* image, std::int32_t width, std::int32_t height,
                              bool& hasAlpha) {
  const ChannelDescription* alpha = document.extraAlpha;
  if (alpha != nullptr && alpha->next != nullptr) return kReadHostFailed;  // which one to take?
  if (alpha == nullptr) alpha = document.mergedTransparency;
  if (alpha == nullptr) {
    hasAlpha = false;
    return kReadOk;
  }
  const std::int32_t status = ReadChannelInto(suite, *alpha, Lane::kAlpha, image, width, height);
  if (status == kReadOk) hasAlpha = true;
  return status;
}

HResult ReadChannelDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha) {
  const SuiteReference suite(record->basicSuite);
  if (suite.Get() == nullptr) return kResultFail;

  const std::int32_t width = record->imageWidth;
  const std::int32_t height = record->imageHeight;
  image = AllocateRows(height, width * kPixelBytes);
  if (!image || record->document == nullptr) return kResultFail;

  const std::int32_t status =
      ReadChannels(*suite.Get(), *record->document, image.Data(), width, height, hasAlpha);
  return status > kReadOk ? kResultFail : kResultOk;
}

}  // namespace mixdecks
