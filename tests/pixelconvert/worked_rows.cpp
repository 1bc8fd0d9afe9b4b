#include "tests/pixelconvert/worked_rows.h"

#include <gtest/gtest.h>

#include "tests/pixelconvert/harness/validator.h"
#include "tests/pixelconvert/reference/rgb_rows.h"

namespace mixdecks::proof {

using reference::FormatNamed;

Bytes Convert(std::string_view source, std::string_view destination, ColourSpaceIndex colourSpace,
              std::size_t width, const Bytes& row) {
  static Validator validator;
  const reference::Format& from = FormatNamed(source);
  const reference::Format& to = FormatNamed(destination);
  const Conversion conversion = {&from, &to, colourSpace,
                                 GetPixelConverter(from.code, to.code, colourSpace)};
  const Picture picture = MakePicture(conversion, static_cast<std::uint32_t>(width), {row});
  EXPECT_EQ(row.size(), reference::SourceRowBytes(from.code, width)) << "the test's own row";
  EXPECT_EQ(validator.Check(conversion, picture, kLayouts[0]), "") << Describe(conversion);
  return picture.expected[0];
}

Bytes Convert(std::string_view source, std::string_view destination, std::size_t width,
              const Bytes& row) {
  return Convert(source, destination, kRec601, width, row);
}

Bytes Repeated(const Bytes& unit, std::size_t count) {
  Bytes row;
  for (std::size_t i = 0; i < count; ++i)
    row.insert(row.end(), unit.begin(), unit.end());
  return row;
}

Bytes RgbRow(std::string_view format, const std::vector<reference::Colour>& pixels) {
  return reference::WriteRgbRow(FormatNamed(format).code, pixels);
}

Bytes YuvRow(std::string_view format, const std::vector<reference::PixelPair>& pairs) {
  return reference::WriteYuvRow(FormatNamed(format).code, pairs);
}

std::vector<reference::Colour> RgbOf(std::string_view format, const Bytes& row, std::size_t width) {
  return reference::ReadRgbRow(FormatNamed(format).code, row, width);
}

std::vector<reference::PixelPair> YuvOf(std::string_view format, const Bytes& row) {
  const PixelFormatCode code = FormatNamed(format).code;
  const std::size_t pairBytes = reference::DestinationRowBytes(code, 12) / 6;
  const std::size_t pairs = code == kV210 ? row.size() / 16 * 3 : row.size() / pairBytes;
  return reference::ReadYuvRow(code, row, pairs);
}

Bytes Head(const Bytes& row, std::size_t count) {
  return {row.begin(), row.begin() + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace mixdecks::proof
