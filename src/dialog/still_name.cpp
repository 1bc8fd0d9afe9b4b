#include "dialog/still_name.h"

#include <algorithm>

namespace mixdecks {

const char* CutStillName(std::uint8_t (&fileName)[256]) noexcept {
  const int length = std::min<int>(fileName[0], 254);
  int start = 1;
  int end = length;
  for (int i = length; i >= start; --i) {
    if (fileName[i] == '.') end = i - 1;
    if (fileName[i] == '\\') start = i + 1;
  }
  fileName[end + 1] = 0;
  return reinterpret_cast<const char*>(&fileName[start]);
}

}  // namespace mixdecks
