#include "simulator/code_text.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "transfer/video_modes.h"

namespace mixdecks::simulator {
namespace {

constexpr bool IsPrintable(char character) {
  return character >= ' ' && character <= '~';
}

}  // namespace

std::string CodeText(std::uint32_t code) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8)
    text += static_cast<char>(code >> shift & 0xFF);
  if (std::ranges::all_of(text, IsPrintable)) return text;
  std::array<char, 11> hexadecimal{};
  std::snprintf(hexadecimal.data(), hexadecimal.size(), "0x%08X", static_cast<unsigned>(code));
  return hexadecimal.data();
}

std::optional<std::uint32_t> CodeFromText(std::string_view text) noexcept {
  if (text.size() != 4 || !std::ranges::all_of(text, IsPrintable)) return std::nullopt;
  std::uint32_t code = 0;
  for (const char character : text)
    code = code << 8 | static_cast<unsigned char>(character);
  return code;
}

std::string VideoModeList() {
  std::string list;
  for (const VideoModeInfo& mode : VideoModes()) {
    if (!list.empty()) list += ", ";
    list += CodeText(mode.code);
  }
  return list;
}

bool IsVideoMode(std::uint32_t code) noexcept {
  return std::ranges::find(VideoModes(), code, &VideoModeInfo::code) != VideoModes().end();
}

std::optional<std::uint32_t> VideoModeFromText(std::string_view text) noexcept {
  const std::optional<std::uint32_t> code = CodeFromText(text);
  return code && IsVideoMode(*code) ? code : std::nullopt;
}

}  // namespace mixdecks::simulator
