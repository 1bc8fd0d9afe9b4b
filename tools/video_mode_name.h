// Video modes as people call them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/four_character_code.h"
#include "simulator/code_text.h"

namespace mixdecks {

struct VideoModeName {
  std::uint32_t code;
  std::string_view name;
};

inline constexpr VideoModeName kVideoModeNames[] = {
    {FourCharacterCode("ntsc"), "525i59.94 4:3"},  {FourCharacterCode("pall"), "625i50 4:3"},
    {FourCharacterCode("ntsA"), "525i59.94 16:9"}, {FourCharacterCode("palA"), "625i50 16:9"},
    {FourCharacterCode("72p0"), "720p50"},         {FourCharacterCode("72p9"), "720p59.94"},
    {FourCharacterCode("10i0"), "1080i50"},        {FourCharacterCode("10i9"), "1080i59.94"},
    {FourCharacterCode("10p3"), "1080p23.98"},     {FourCharacterCode("10p4"), "1080p24"},
    {FourCharacterCode("10p5"), "1080p25"},        {FourCharacterCode("10p7"), "1080p29.97"},
    {FourCharacterCode("10p0"), "1080p50"},        {FourCharacterCode("10p9"), "1080p59.94"},
    {FourCharacterCode("4H23"), "2160p23.98"},     {FourCharacterCode("4H24"), "2160p24"},
    {FourCharacterCode("4H25"), "2160p25"},        {FourCharacterCode("4H29"), "2160p29.97"},
    {FourCharacterCode("4H50"), "2160p50"},        {FourCharacterCode("4H59"), "2160p59.94"},
};

/// "1080i59.94" for `10i9`; "unknown" for a code that is no video mode.
constexpr std::string_view NameOfVideoMode(std::uint32_t code) noexcept {
  for (const VideoModeName& mode : kVideoModeNames) {
    if (mode.code == code) return mode.name;
  }
  return "unknown";
}

/// "10i9 (1080i59.94)".
inline std::string VideoModeText(std::uint32_t code) {
  return simulator::CodeText(code) + " (" + std::string(NameOfVideoMode(code)) + ")";
}

}  // namespace mixdecks
