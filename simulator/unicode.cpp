#include "simulator/unicode.h"

#include <cstddef>
#include <cstdint>

namespace mixdecks::simulator {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}
constexpr bool IsContinuation(std::uint8_t byte) {
  return (byte & 0xC0) == 0x80;
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) {
    append(character);
  } else if (character < 0x800) {
    append(0xC0 | character >> 6);
    append(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    append(0xE0 | character >> 12);
    append(0x80 | (character >> 6 & 0x3F));
    append(0x80 | (character & 0x3F));
  } else {
    append(0xF0 | character >> 18);
    append(0x80 | (character >> 12 & 0x3F));
    append(0x80 | (character >> 6 & 0x3F));
    append(0x80 | (character & 0x3F));
  }
}

void AppendUtf16(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text += static_cast<char16_t>(character);
  } else {
    text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
  }
}

/// Takes one character off the front of UTF-8; a byte that begins none gives the replacement.
char32_t TakeUtf8(std::string_view& text) {
  const auto lead = static_cast<std::uint8_t>(text[0]);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  constexpr std::uint8_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  bool valid = length != 0 && length <= text.size();
  char32_t character = lead & kLeadBits[length];
  for (std::size_t i = 1; valid && i < length; ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    valid = IsContinuation(byte);
    character = character << 6 | (byte & 0x3F);
  }
  valid = valid && character >= kSmallest[length] && character <= 0x10FFFF &&
          !IsHighSurrogate(character) && !IsLowSurrogate(character);
  text.remove_prefix(valid ? length : 1);
  return valid ? character : kReplacement;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t character = text[i];
    if (IsHighSurrogate(character) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - char32_t{0xDC00});
    } else if (IsHighSurrogate(character) || IsLowSurrogate(character)) {
      character = kReplacement;
    }
    AppendUtf8(result, character);
  }
  return result;
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  while (!text.empty())
    AppendUtf16(result, TakeUtf8(text));
  return result;
}

std::string PathText(const std::filesystem::path& path) {
  if constexpr (sizeof(std::filesystem::path::value_type) == sizeof(char16_t)) {
    // Not path::u8string(): it throws on names that are no valid UTF-16, which a disk may hold.
    const auto& native = path.native();
    return ToUtf8(std::u16string(native.begin(), native.end()));
  } else {
    return path.string();
  }
}

}  // namespace mixdecks::simulator
