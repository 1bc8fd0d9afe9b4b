// Four-character codes: 32-bit numbers whose most significant byte is the first character.
#pragma once

#include <cstdint>

namespace mixdecks {

/// `FourCharacterCode("cmpt")` is 0x636D7074.
constexpr std::uint32_t FourCharacterCode(const char (&characters)[5]) noexcept {
  std::uint32_t code = 0;
  for (int i = 0; i < 4; ++i)
    code = code << 8 | static_cast<unsigned char>(characters[i]);
  return code;
}

}  // namespace mixdecks
