#include "transfer/video_modes.h"

#include <algorithm>
#include <iterator>

#include "platform/four_character_code.h"

namespace mixdecks {
namespace {

constexpr VideoModeInfo Mode(const char (&code)[5], std::uint32_t width, std::uint32_t height,
                             std::uint32_t aspectNumerator, std::uint32_t aspectDenominator,
                             std::uint32_t colourSpace, std::uint32_t frameRateFamily) {
  return {FourCharacterCode(code), width,       height,         aspectNumerator,
          aspectDenominator,       colourSpace, frameRateFamily};
}

// clang-format off
constexpr VideoModeInfo kVideoModes[] = {
    Mode("ntsc",  720,  486,  4, 3, 0, 30),
    Mode("pall",  720,  576,  4, 3, 0, 25),
    Mode("ntsA",  720,  486, 16, 9, 0, 30),
    Mode("palA",  720,  576, 16, 9, 0, 25),
    Mode("72p0", 1280,  720, 16, 9, 1, 25),
    Mode("72p9", 1280,  720, 16, 9, 1, 30),
    Mode("10i0", 1920, 1080, 16, 9, 1, 25),
    Mode("10i9", 1920, 1080, 16, 9, 1, 30),
    Mode("10p3", 1920, 1080, 16, 9, 1, 25),
    Mode("10p4", 1920, 1080, 16, 9, 1, 25),
    Mode("10p5", 1920, 1080, 16, 9, 1, 25),
    Mode("10p7", 1920, 1080, 16, 9, 1, 30),
    Mode("10p0", 1920, 1080, 16, 9, 1, 25),
    Mode("10p9", 1920, 1080, 16, 9, 1, 30),
    Mode("4H23", 3840, 2160, 16, 9, 1, 25),
    Mode("4H24", 3840, 2160, 16, 9, 1, 25),
    Mode("4H25", 3840, 2160, 16, 9, 1, 25),
    Mode("4H29", 3840, 2160, 16, 9, 1, 30),
    Mode("4H50", 3840, 2160, 16, 9, 1, 25),
    Mode("4H59", 3840, 2160, 16, 9, 1, 30),
};
// clang-format on

constexpr VideoModeInfo kFallbackMode = {0, 1920, 1080, 16, 9, 1, 25};

}  // namespace

const VideoModeInfo* FindVideoMode(std::uint32_t code) noexcept {
  const VideoModeInfo* found = std::ranges::find(kVideoModes, code, &VideoModeInfo::code);
  return found == std::end(kVideoModes) ? &kFallbackMode : found;
}

std::span<const VideoModeInfo> VideoModes() noexcept {
  return kVideoModes;
}

}  // namespace mixdecks
