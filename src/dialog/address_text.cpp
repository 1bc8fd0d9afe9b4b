#include "dialog/address_text.h"

#include <array>

namespace mixdecks {
namespace {

constexpr std::uint32_t kBroadcastAddress = 0xFFFFFFFF;

std::optional<std::uint32_t> ParseNumber(std::string_view digits) noexcept {
  if (digits.empty()) return std::nullopt;
  const bool octal = digits.size() > 1 && digits.front() == '0';
  const char base = octal ? 8 : 10;
  std::uint32_t number = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit >= '0' + base) return std::nullopt;
    number = number * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(digit - '0');
    if (number > 255) return std::nullopt;
  }
  return number;
}

}  // namespace

std::optional<std::uint32_t> ParseDottedAddress(std::string_view text) noexcept {
  std::uint32_t address = 0;
  for (int part = 0; part < 4; ++part) {
    const std::size_t dot = part < 3 ? text.find('.') : text.size();
    if (dot == std::string_view::npos) return std::nullopt;
    const std::optional<std::uint32_t> number = ParseNumber(text.substr(0, dot));
    if (!number) return std::nullopt;
    address = address << 8 | *number;
    text.remove_prefix(part < 3 ? dot + 1 : dot);
  }
  return address;
}

bool IsAddressText(std::u16string_view text) noexcept {
  if (text.size() > kLongestAddress) return false;
  std::array<char, kLongestAddress> narrow;
  for (std::size_t i = 0; i < text.size(); ++i) {
    // The low byte alone decides, so that full-width look-alikes count by what they end in.
    const auto character = static_cast<char>(text[i] & 0xFF);
    if (character != '.' && (character < '0' || character > '9')) return false;
    narrow[i] = character;
  }
  const std::optional<std::uint32_t> address = ParseDottedAddress({narrow.data(), text.size()});
  return address && *address != kBroadcastAddress;
}

}  // namespace mixdecks
