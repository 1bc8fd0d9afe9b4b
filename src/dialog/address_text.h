// Whether what stands in the address field is a switcher's dotted address.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace mixdecks {

/// Longest text that can be an address, in UTF-16 units.
inline constexpr std::size_t kLongestAddress = 15;

/// Reads four numbers with dots between them, each decimal, or octal after a leading zero, and
/// from 0 to 255. The first one is the result's top byte. Characters other than digits and dots,
/// another count of numbers, and empty numbers give nothing.
std::optional<std::uint32_t> ParseDottedAddress(std::string_view text) noexcept;

/// Whether `text` is an address that can be connected to: at most `kLongestAddress` units, digits
/// and dots by their low bytes, three dots, and not the broadcast address.
bool IsAddressText(std::u16string_view text) noexcept;

}  // namespace mixdecks
