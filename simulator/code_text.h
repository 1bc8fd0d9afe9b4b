// Four-character codes as text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mixdecks::simulator {

/// The four characters of a code; a code with others than printable ASCII in hexadecimal.
std::string CodeText(std::uint32_t code);

/// The code of a text of exactly four printable ASCII characters.
std::optional<std::uint32_t> CodeFromText(std::string_view text) noexcept;

/// The codes of all video modes, `ntsc, pall, …`, for messages.
std::string VideoModeList();

/// Whether a code is that of a known video mode.
bool IsVideoMode(std::uint32_t code) noexcept;

/// The code of a known video mode.
std::optional<std::uint32_t> VideoModeFromText(std::string_view text) noexcept;

}  // namespace mixdecks::simulator
