#include "tests/pixelconvert/harness/findings.h"

#include <algorithm>
#include <cstdio>
#include <optional>

namespace mixdecks::proof {
namespace {

std::string Hex(const std::uint8_t* bytes, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X", bytes[i]);
    text += (i == 0 ? "" : " ") + std::string(digits);
  }
  return text;
}

// A place beside a picture, or in it.
std::optional<std::string> Locate(std::uintptr_t address, const PlacedPicture& picture,
                                  const std::string& name) {
  constexpr std::intptr_t kNear = 65536;
  const auto at = static_cast<std::intptr_t>(address);
  const auto begin = reinterpret_cast<std::intptr_t>(picture.windowBegin);
  const auto end = reinterpret_cast<std::intptr_t>(picture.windowEnd);
  if (at < begin - kNear || at >= end + kNear) return std::nullopt;
  if (at < begin) return std::to_string(begin - at) + " bytes before the " + name;
  if (at < end) return std::to_string(at - begin) + " bytes into the " + name;
  return std::to_string(at - end) + " bytes behind the last of the " + name;
}

// The samples that lie together in memory: a pixel, a pair, a group.
struct Unit {
  std::size_t bytes, pixels;
};

Unit UnitOf(PixelFormatCode code) {
  switch (code) {
    case kRgb3:
      return {3, 1};
    case k2vuy:
      return {4, 2};
    case kV210:
      return {16, 6};
    case kR12Big:
    case kR12Little:
      return {36, 8};
    default:
      return {4, 1};
  }
}

std::string DescribeByteOfRow(const PlacedPicture& destination, const reference::Format& format,
                              const std::vector<std::uint8_t>& expected, std::size_t row,
                              std::size_t byte, std::uint8_t fill) {
  const Unit unit = UnitOf(format.code);
  const std::size_t pixel = byte / unit.bytes * unit.pixels;
  const std::size_t start = byte / unit.bytes * unit.bytes;
  const std::size_t count = std::min(unit.bytes, destination.rowBytes - start);
  const auto offset = static_cast<std::size_t>(destination.OffsetOfRow(row)) + start;
  const std::uint8_t actual = destination.windowBegin[offset + byte - start];
  return "row " + std::to_string(row) + ", byte " + std::to_string(byte) + ", " +
         (unit.pixels == 1 ? "pixel " : "group at pixel ") + std::to_string(pixel) +
         (actual == fill ? ", probably never written" : "") + ": expected " +
         Hex(&expected[offset], count) + ", actual " + Hex(destination.windowBegin + offset, count);
}

std::string DescribeByteOutside(const PlacedPicture& destination, std::ptrdiff_t offset) {
  for (std::size_t row = 0; row < static_cast<std::size_t>(destination.height); ++row) {
    const std::ptrdiff_t begin = destination.OffsetOfRow(row);
    const auto behind = begin + static_cast<std::ptrdiff_t>(destination.rowBytes);
    if (offset >= behind && offset - behind < 64) {
      return "written outside the rows: " + std::to_string(offset - behind) +
             " bytes behind the end of row " + std::to_string(row);
    }
    if (offset < begin && begin - offset <= 64) {
      return "written outside the rows: " + std::to_string(begin - offset) +
             " bytes before the start of row " + std::to_string(row);
    }
  }
  return "written outside the rows";
}

}  // namespace

std::string DescribeFault(const Fault& fault, const PlacedPicture& source,
                          const PlacedPicture& destination) {
  if (fault.kind == FaultKind::kIllegalInstruction) {
    return "crashed: this processor lacks an instruction that the converter uses";
  }
  if (const auto place = Locate(fault.address, source, "source")) return "crashed: " + *place;
  if (const auto place = Locate(fault.address, destination, "destination")) {
    return "crashed: " + *place;
  }
  return "crashed far from source and destination";
}

std::string DescribeDifference(const PlacedPicture& destination, const reference::Format& format,
                               const std::vector<std::uint8_t>& expected,
                               const std::uint8_t* fill) {
  const std::uint8_t* actual = destination.windowBegin;
  const std::ptrdiff_t offset =
      std::mismatch(expected.begin(), expected.end(), actual).first - expected.begin();
  const auto rowBytes = static_cast<std::ptrdiff_t>(destination.rowBytes);
  for (std::size_t row = 0; row < static_cast<std::size_t>(destination.height); ++row) {
    const std::ptrdiff_t byte = offset - destination.OffsetOfRow(row);
    if (byte >= 0 && byte < rowBytes) {
      return DescribeByteOfRow(destination, format, expected, row, static_cast<std::size_t>(byte),
                               fill[offset]);
    }
  }
  return DescribeByteOutside(destination, offset);
}

}  // namespace mixdecks::proof
