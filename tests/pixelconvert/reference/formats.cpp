#include "tests/pixelconvert/reference/formats.h"

#include <stdexcept>
#include <string>

namespace mixdecks::reference {
namespace {

// Bytes of a row of whole groups, each of `pixels` pixels in `bytes` bytes.
std::size_t WholeGroups(std::size_t width, std::size_t pixels, std::size_t bytes) {
  return (width + pixels - 1) / pixels * bytes;
}

}  // namespace

const Format& FormatOf(PixelFormatCode code) {
  for (const Format& format : kFormats) {
    if (format.code == code) return format;
  }
  throw std::out_of_range("no pixel format has the code " + std::to_string(code));
}

const Format& FormatNamed(std::string_view name) {
  for (const Format& format : kFormats) {
    if (format.name == name) return format;
  }
  throw std::out_of_range("no pixel format is named " + std::string(name));
}

int DepthOf(const Format& format) {
  switch (format.kind) {
    case Kind::kRgb8:
      return 8;
    case Kind::kRgb10:
      return 10;
    case Kind::kRgb12:
      return 12;
    case Kind::kYuv:
      break;
  }
  return format.code == k2vuy ? 8 : 10;
}

std::size_t SourceRowBytes(PixelFormatCode code, std::size_t width) {
  switch (code) {
    case kRgb3:
      return 3 * width;
    case kR12Big:
    case kR12Little:
      return WholeGroups(width, 8, 36);
    case k2vuy:
      return 2 * width;
    case kV210:
      return WholeGroups(width, 6, 16);
    case kAy10:
      return WholeGroups(width, 4, 16);
    default:
      return 4 * width;
  }
}

std::size_t DestinationRowBytes(PixelFormatCode code, std::size_t width) {
  return code == k2vuy ? WholeGroups(width, 2, 4) : SourceRowBytes(code, width);
}

}  // namespace mixdecks::reference
