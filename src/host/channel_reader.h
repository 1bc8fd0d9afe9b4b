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

/// Reads the document of `record`. `image` gets width x height x 4 bytes, rows without gaps; it
/// keeps what was allocated also on failure. `hasAlpha` is written once the alpha channel was
/// looked for, and left alone when the list of channels ended early. `kResultOk` or `kResultFail`.
HResult ReadChannelDocument(ExportRecord* record, HeapBlock& image, bool& hasAlpha);

}  // namespace mixdecks
