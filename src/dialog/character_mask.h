// Which characters an edit takes from the keyboard: a table over the low byte of a character.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace mixdecks {

class CharacterMask {
 public:
  /// Sets all 256 entries: with `allow` only these characters pass, without it all but these.
  void Set(std::string_view characters, bool allow) noexcept {
    entries_.fill(allow ? 0 : 1);
    for (const char character : characters) {
      entries_[static_cast<unsigned char>(character)] = allow ? 1 : 0;
    }
  }

  /// Whether a character message passes; `character` is the message's first parameter.
  bool Passes(std::uintptr_t character) const noexcept { return entries_[character & 0xFF] == 1; }

 private:
  std::array<std::uint32_t, 256> entries_{};
};
static_assert(sizeof(CharacterMask) == 1024);

}  // namespace mixdecks
