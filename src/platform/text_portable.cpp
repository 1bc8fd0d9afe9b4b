#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "platform/text.h"

namespace mixdecks {
namespace {

// The block begins with eight bytes, of which the last four hold the length: so the characters
// are aligned like the block.
constexpr std::size_t kPrefixBytes = 8;
constexpr std::size_t kLengthBytes = sizeof(std::uint32_t);
constexpr std::size_t kMaximumLength =
    (std::numeric_limits<std::uint32_t>::max() - kPrefixBytes) / sizeof(char16_t) - 1;

std::byte* BlockOf(char16_t* text) {
  return reinterpret_cast<std::byte*>(text) - kPrefixBytes;
}

}  // namespace

char16_t* AllocateText(const char16_t* characters, std::size_t length) {
  if (length > kMaximumLength) throw std::bad_alloc();
  const auto bytes = static_cast<std::uint32_t>(length * sizeof(char16_t));
  auto* block = static_cast<std::byte*>(std::malloc(kPrefixBytes + bytes + sizeof(char16_t)));
  if (block == nullptr) throw std::bad_alloc();

  std::byte* text = block + kPrefixBytes;
  std::memcpy(text - kLengthBytes, &bytes, kLengthBytes);
  if (length != 0) std::memcpy(text, characters, bytes);
  std::memset(text + bytes, 0, sizeof(char16_t));
  return reinterpret_cast<char16_t*>(text);
}

void FreeText(char16_t* text) noexcept {
  if (text != nullptr) std::free(BlockOf(text));
}

std::size_t TextLength(const char16_t* text) noexcept {
  if (text == nullptr) return 0;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const std::byte*>(text) - kLengthBytes, kLengthBytes);
  return bytes / sizeof(char16_t);
}

}  // namespace mixdecks
