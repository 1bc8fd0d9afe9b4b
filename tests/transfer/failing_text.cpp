#include "tests/transfer/failing_text.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/text.h"

namespace mixdecks {
namespace {

/// How many texts of this thread go well before one fails; negative: all of them.
thread_local int textsLeft = -1;
std::atomic<int> textsHeld{0};

// The length in bytes stands in the last two of these units.
constexpr std::size_t kPrefixUnits = 4;
constexpr std::size_t kLengthUnits = 2;

}  // namespace

FailText::FailText(int number) {
  textsLeft = number - 1;
}
FailText::~FailText() {
  textsLeft = -1;
}

int TextsHeld() {
  return textsHeld;
}

char16_t* AllocateText(const char16_t* characters, std::size_t length) {
  if (textsLeft >= 0 && textsLeft-- == 0) throw std::bad_alloc();
  auto* block = static_cast<char16_t*>(std::calloc(kPrefixUnits + length + 1, sizeof(char16_t)));
  if (block == nullptr) throw std::bad_alloc();
  const auto bytes = static_cast<std::uint32_t>(length * sizeof(char16_t));
  std::memcpy(block + kPrefixUnits - kLengthUnits, &bytes, sizeof(bytes));
  if (length != 0) std::memcpy(block + kPrefixUnits, characters, bytes);
  ++textsHeld;
  return block + kPrefixUnits;
}

void FreeText(char16_t* text) noexcept {
  if (text == nullptr) return;
  std::free(text - kPrefixUnits);
  --textsHeld;
}

std::size_t TextLength(const char16_t* text) noexcept {
  if (text == nullptr) return 0;
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, text - kLengthUnits, sizeof(bytes));
  return bytes / sizeof(char16_t);
}

}  // namespace mixdecks
