// Reads the document's merged channels through the host's channel port suite into one interleaved
// 8-bit BGRA image. Runs on the host's main thread; takes no lock.
#pragma once

#include "host/export_record.h"
#include "platform/heap.h"
#include "platform/result.h"

namespace mixdecks {

inline constexpr char kChannelPortsSuiteName[] = "Photoshop ChannelPorts Suite for Plug-ins";
inline constexpr std::int32_t kChannelPortsSuiteVersion = 3;

/// Where the host is to put the pixels of a channel.
struct PixelDescription {
  void* data;
  std::int32_t rowBits;
  std::int32_t columnBits;
  std::int32_t bitOffset;
  std::int32_t depth;
};

/// The suite's table, called by position; positions without a name are not called.
/// Results are 0 on success.
struct ChannelPortsSuite {
  std::int32_t (*countLevels)(void* port, std::int32_t* count);
  std::int32_t (*getDepth)(void* port, std::int32_t level, std::int32_t* depth);
  std::int32_t (*getBounds)(void* port, std::int32_t level, HostRect32* bounds);
  void* unnamed3[6];
  std::int32_t (*readPixels)(void* port, std::int32_t level, HostRect32* bounds,
                             PixelDescription* pixels);
};
static_assert(offsetof(ChannelPortsSuite, readPixels) == 9 * sizeof(void*));

/// Byte of a pixel that a channel goes to.
enum class Lane : std::uint8_t { kBlue = 0, kGreen = 1, kRed = 2, kAlpha = 3 };

/// How a step of the reading ended. What the host's own read gives passes through as it is, so
/// that other values occur too.
enum ReadStatus : std::int32_t {
  kReadOk = 0,
  kReadNoMemory = 1,    ///< an allocation failed, or the sizes are none that memory can hold
  kReadHostFailed = 2,  ///< a call to the host failed, or its list of channels is unusable
  kReadMisfit = 3,      ///< the channel's bounds or depth do not fit the document
};

/// Reads one channel into its lane of `image`, width x height pixels of four bytes without gaps.
///
/// Of 8 bits, the lane alone is written. Of 16 bits, each sample is stored as a word of 32 bits
/// that begins at the lane: the three bytes after the lane, into the next pixel, become zero. What
/// would lie past the image's end is dropped.
std::int32_t ReadChannelInto(const ChannelPortsSuite& suite, const ChannelDescription& channel,
                             Lane lane, std::uint8_t* image, std::int32_t width,
                             std::int32_t height);

/// Reads the extra alpha channel, or without one the merged transparency, into the alpha lane.
/// `hasAlpha` becomes true, or false when the document has neither; a failure leaves it alone.
std::int32_t ReadAlphaChannel(const ChannelPortsSuite& suite, const DocumentDescription& document,
                              std::uint8_t* image, std::int32_t width, std::int32_t height,
                              bool& hasAlpha);

/// Reads the document of `record`. `image` gets width x height x 4 bytes, rows without gaps; it
/// keeps what was allocated also on failure. `hasAlpha` is written once the alpha channel was
/// looked for, and left alone when the list of channels ended early. `kResultOk` or `kResultFail`.
///
/// Colour lanes that no channel was read for are zero whenever the result is `kResultOk`: a list
/// may end early, and a host that refuses to read with a negative number ends the reading without
/// failing it. The alpha lane of an opaque document is not written.
HResult ReadChannelDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha);

}  // namespace mixdecks
