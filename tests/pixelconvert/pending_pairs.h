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
    {"32", "BGRA RGBA r210 R210 R10b R10l R10B R10L R10A"},
    {"BGRA", "32 RGBA r210 R210 R10b R10l R10B R10L R10A R12B R12L"},
    {"RGBA", "32 BGRA RGB3 r210 R210 R10b R10l R10B R10L R10A"},
    {"RGB3", "32 BGRA RGBA r210 R210 R10b R10l R10B R10L R10A"},
    {"r210", "32 BGRA RGBA RGB3 R210 R10b R10l R10B R10L R10A 2vuy v210"},
    {"R210", "32 BGRA RGBA RGB3 r210 R10b R10l R10B R10L R10A 2vuy v210"},
    {"R10b", "32 BGRA RGBA RGB3 r210 R210 R10l R10B R10L R10A 2vuy v210"},
    {"R10l", "32 BGRA RGBA RGB3 r210 R210 R10b R10B R10L R10A 2vuy v210"},
    {"R10B", "32 BGRA RGBA RGB3 r210 R210 R10b R10l R10L R10A 2vuy v210"},
    {"R10L", "32 BGRA RGBA RGB3 r210 R210 R10b R10l R10B R10A 2vuy v210"},
    {"R10A", "32 BGRA RGBA RGB3 r210 R210 R10b R10l R10L R10A 2vuy v210"},
    {"R12B", "32 BGRA 2vuy v210"},
    {"R12L", "32 BGRA 2vuy v210"},
    {"2vuy", "r210 R210 R10b R10l R10B R10L R10A v210 ay10"},
    {"v210", "32 BGRA RGBA RGB3 r210 R210 R10b R10l R10B R10L R10A 2vuy"},
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
