#include <cstdint>

#include "dialog/text_conversion.h"

namespace mixdecks {
namespace {

constexpr std::uint32_t kSubstitute = 0xFFFD;

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// Length of the well-formed UTF-8 sequence at `text` with its character, or 0.
int DecodeSequence(const char* text, std::uint32_t& character) {
  const auto lead = static_cast<unsigned char>(*text);
  const int length = lead < 0x80       ? 1
                     : lead >> 5 == 6  ? 2
                     : lead >> 4 == 14 ? 3
                     : lead >> 3 == 30 ? 4
                                       : 0;
  if (length <= 1) {
    character = lead;
    return length;
  }
  character = lead & (0x7Fu >> length);
  for (int i = 1; i < length; ++i) {
    if (!IsContinuation(text[i])) return 0;
    character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3Fu);
  }
  constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  return character < kSmallest[length] || character > 0x10FFFF || surrogate ? 0 : length;
}

void AppendUtf16(std::u16string& wide, std::uint32_t character) {
  if (character >= 0x10000) {
    wide += static_cast<char16_t>(0xD7C0 + (character >> 10));
    wide += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
  } else {
    wide += static_cast<char16_t>(character);
  }
}

void AppendUtf8(std::string& narrow, std::uint32_t character) {
  if (character < 0x80) {
    narrow += static_cast<char>(character);
    return;
  }
  const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  narrow += static_cast<char>((0xFF00u >> (more + 1) & 0xFF) | character >> (6 * more));
  for (int i = more - 1; i >= 0; --i) {
    narrow += static_cast<char>(0x80 | (character >> (6 * i) & 0x3F));
  }
}

/// Takes one character from `wide`; halves of pairs that stand alone become the substitute.
std::uint32_t TakeCharacter(const char16_t*& wide) {
  const std::uint32_t unit = *wide++;
  if (unit < 0xD800 || unit > 0xDFFF) return unit;
  if (unit > 0xDBFF || *wide < 0xDC00 || *wide > 0xDFFF) return kSubstitute;
  return 0x10000 + ((unit - 0xD800) << 10) + (static_cast<std::uint32_t>(*wide++) - 0xDC00);
}

}  // namespace

std::u16string WideText(const char* narrow) {
  std::u16string wide;
  while (*narrow != '\0') {
    std::uint32_t character = 0;
    const int length = DecodeSequence(narrow, character);
    AppendUtf16(wide, length == 0 ? static_cast<unsigned char>(*narrow) : character);
    narrow += length == 0 ? 1 : length;
  }
  return wide;
}

std::string NarrowText(const char16_t* wide) {
  std::string narrow;
  while (wide != nullptr && *wide != u'\0')
    AppendUtf8(narrow, TakeCharacter(wide));
  return narrow;
}

}  // namespace mixdecks
