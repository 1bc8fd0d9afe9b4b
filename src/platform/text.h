// Text that crosses threads and the service's interfaces: BSTR strings of UTF-16 code units.
//
// A BSTR points at its first unit; its length in bytes stands in the four bytes before it and a
// zero unit after it. On Windows the system's own allocator is used, elsewhere one of the same
// layout. Any thread may call; a string may be freed on another thread than it was made on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace mixdecks {

/// Makes a string of `length` units copied from `characters`, which may hold zero units.
/// Throws `std::bad_alloc` when there is no memory.
char16_t* AllocateText(const char16_t* characters, std::size_t length);

/// Frees a string. Null is ignored.
void FreeText(char16_t* text) noexcept;

/// Length in units; 0 for null.
std::size_t TextLength(const char16_t* text) noexcept;

/// The one owner of a BSTR, or of none.
class Text {
 public:
  Text() = default;
  explicit Text(std::u16string_view characters)
      : text_(AllocateText(characters.data(), characters.size())) {}
  /// Takes ownership of `text`, which may be null.
  static Text Adopt(char16_t* text) noexcept {
    Text owner;
    owner.text_ = text;
    return owner;
  }
  /// A copy of a zero-terminated string; a null pointer gives no string.
  static Text CopyOf(const char16_t* characters) {
    return characters == nullptr ? Text() : Text(std::u16string_view(characters));
  }
  Text(Text&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Text& operator=(Text&& other) noexcept {
    if (this != &other) FreeText(std::exchange(text_, std::exchange(other.text_, nullptr)));
    return *this;
  }
  ~Text() { FreeText(text_); }

  explicit operator bool() const noexcept { return text_ != nullptr; }
  /// The string itself, still owned here; null when there is none.
  char16_t* Get() const noexcept { return text_; }
  std::u16string_view View() const noexcept {
    return text_ == nullptr ? std::u16string_view() : std::u16string_view(text_, TextLength(text_));
  }
  /// Where an operation that hands a string out may store it; what was held is freed first.
  char16_t** Receive() noexcept {
    FreeText(std::exchange(text_, nullptr));
    return &text_;
  }
  [[nodiscard]] char16_t* Detach() noexcept { return std::exchange(text_, nullptr); }

 private:
  char16_t* text_ = nullptr;
};

}  // namespace mixdecks
