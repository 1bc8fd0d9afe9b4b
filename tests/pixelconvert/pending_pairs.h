// The pairs whose converters are still to come. A test holds this list against the lookup in both
// directions, so it shrinks as they arrive and is empty in the end.
#pragma once

#include <array>
#include <sstream>
#include <string>
#include <string_view>

namespace mixdecks::proof {

struct PendingRow {
  std::string_view source, destinations;
};

inline constexpr std::array<PendingRow, 16> kPendingPairs = {{
    {"32", ""},
    {"BGRA", ""},
    {"RGBA", ""},
    {"RGB3", ""},
    {"r210", ""},
    {"R210", ""},
    {"R10b", ""},
    {"R10l", ""},
    {"R10B", ""},
    {"R10L", ""},
    {"R10A", ""},
    {"R12B", ""},
    {"R12L", ""},
    {"2vuy", ""},
    {"v210", ""},
    {"ay10", ""},
}};

inline bool IsPending(std::string_view source, std::string_view destination) {
  for (const PendingRow& row : kPendingPairs) {
    if (row.source != source) continue;
    std::istringstream names{std::string(row.destinations)};
    for (std::string name; names >> name;) {
      if (name == destination) return true;
    }
  }
  return false;
}

}  // namespace mixdecks::proof
