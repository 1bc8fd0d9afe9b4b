#include "tools/picture/picture_header.h"

#include <fmt/format.h>

#include "tools/picture/format_inspectors.h"
#include "tools/picture/picture_error.h"

namespace mixdecks {
namespace {

using namespace std::string_view_literals;

struct FormatEntry {
  PictureFormat format;
  std::string_view name;
  std::string_view signature;
  PictureHeader (*inspect)(std::span<const std::uint8_t> file);
};

constexpr FormatEntry kFormats[] = {
    {PictureFormat::kPng, "PNG", "\x89PNG\r\n\x1A\n"sv, InspectPng},
    {PictureFormat::kJpeg, "JPEG", "\xFF\xD8\xFF"sv, InspectJpeg},
    {PictureFormat::kPsd, "PSD", "8BPS"sv, InspectPsd},
    {PictureFormat::kBmp, "BMP", "BM"sv, InspectBmp},
    {PictureFormat::kPnm, "PNM", "P5"sv, InspectPnm},
    {PictureFormat::kPnm, "PNM", "P6"sv, InspectPnm},
};

void CheckSides(const PictureHeader& header) {
  if (header.width == 0 || header.height == 0) {
    throw PictureError(
        fmt::format("the picture has no pixels: it declares {} x {}", header.width, header.height),
        "use a picture of at least 1 x 1 pixel");
  }
  if (header.width > kLargestSide || header.height > kLargestSide) {
    throw PictureError(fmt::format("the picture is too large: it declares {} x {} pixels",
                                   header.width, header.height),
                       fmt::format("scale it down to at most {0} x {0}", kLargestSide));
  }
}

}  // namespace

std::string_view ColourModeName(ColourMode mode) noexcept {
  switch (mode) {
    case ColourMode::kBitmap:
      return "bitmap";
    case ColourMode::kGrey:
      return "greyscale";
    case ColourMode::kIndexed:
      return "indexed colour";
    case ColourMode::kRgb:
      return "RGB";
    case ColourMode::kCmyk:
      return "CMYK";
    case ColourMode::kMultichannel:
      return "multichannel";
    case ColourMode::kDuotone:
      return "duotone";
    case ColourMode::kLab:
      return "Lab";
  }
  return "unknown";
}

std::string_view PictureFormatName(PictureFormat format) noexcept {
  for (const FormatEntry& entry : kFormats) {
    if (entry.format == format) return entry.name;
  }
  return "unknown";
}

PictureHeader InspectPicture(std::span<const std::uint8_t> file) {
  if (file.empty()) throw PictureError("the file is empty", "copy or export the picture again");
  for (const FormatEntry& entry : kFormats) {
    if (!StartsWith(file, entry.signature)) continue;
    PictureHeader header = entry.inspect(file);
    header.format = entry.format;
    CheckSides(header);
    return header;
  }
  throw PictureError("this is not a picture that mixdecks can read",
                     "give a PNG, JPEG, PSD, BMP, PPM or PGM file");
}

}  // namespace mixdecks
