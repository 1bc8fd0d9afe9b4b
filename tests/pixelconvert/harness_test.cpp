// The harness has to be trusted before anything it says: each planted fault must be caught, and
// an honest converter must pass.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

#include "tests/pixelconvert/proof_plan.h"
#include "tests/pixelconvert/reference/arithmetic.h"
#include "tests/pixelconvert/reference/reference.h"
#include "tests/pixelconvert/reference/rgb_rows.h"
#include "tests/pixelconvert/reference/yuv_rows.h"

namespace mixdecks::proof {
namespace {

using reference::Colour;
using reference::FormatNamed;
using testing::HasSubstr;
using testing::IsEmpty;

using Bytes = std::vector<std::uint8_t>;

// A converter is a plain function, so what the planted one does is told to it here.
struct Planted {
  Conversion conversion = {};
  /// Spoils or replaces a row; gets the right bytes and the source row.
  std::function<void(Bytes& right, const Bytes& source)> row = {};
  /// Does something else before or after the rows.
  std::function<void(std::uint8_t* dst, std::size_t rowBytes, const std::uint8_t* src,
                     std::size_t sourceBytes)>
      beside = {};
  bool ignoresStride = false;
};
Planted planted;

void PlantedConverter(std::uint32_t width, std::int32_t height, std::uint8_t* dst,
                      std::int32_t dstStride, const std::uint8_t* src, std::int32_t srcStride) {
  const PixelFormatCode from = planted.conversion.source->code;
  const PixelFormatCode to = planted.conversion.destination->code;
  const std::size_t sourceBytes = reference::SourceRowBytes(from, width);
  const std::size_t rowBytes = reference::DestinationRowBytes(to, width);
  if (planted.ignoresStride) dstStride = static_cast<std::int32_t>(rowBytes);
  // Held outside the function: a planted crash abandons it without unwinding.
  static Bytes source, right;
  for (std::ptrdiff_t y = 0; y < height; ++y) {
    source.assign(src + y * srcStride, src + y * srcStride + sourceBytes);
    right = reference::ConvertRow(from, to, planted.conversion.colourSpace, width, source);
    if (planted.row) planted.row(right, source);
    std::copy(right.begin(), right.end(), dst + y * dstStride);
    if (planted.beside) {
      planted.beside(dst + y * dstStride, rowBytes, src + y * srcStride, sourceBytes);
    }
  }
}

// Reads a byte that nobody needs, and lets no compiler leave it out.
void Read(const volatile std::uint8_t* byte) {
  [[maybe_unused]] const std::uint8_t value = *byte;
}

// All findings of a few widths, over every content and layout.
std::vector<std::string> Findings(const char* source, const char* destination, Planted fault,
                                  std::initializer_list<std::uint32_t> widths = {24, 29, 40}) {
  fault.conversion = {&FormatNamed(source), &FormatNamed(destination), 0, PlantedConverter};
  planted = fault;
  Validator validator;
  const Plan plan = {Effort::kDefault, 3, 2, 1};
  std::vector<std::string> findings;
  for (const std::uint32_t width : widths) {
    const auto pictures = PicturesOf(planted.conversion, width, plan);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
      for (const Layout& layout : LayoutsOf(width, i, plan)) {
        std::string finding = validator.Check(planted.conversion, pictures[i], layout);
        if (!finding.empty()) findings.push_back(std::move(finding));
      }
    }
  }
  planted = {};
  return findings;
}

TEST(Harness, PassesAnHonestConverter) {
  EXPECT_THAT(Findings("BGRA", "ay10", {}), IsEmpty());
  EXPECT_THAT(Findings("RGB3", "RGBA", {}, {1, 2, 3, 16, 17, 300}), IsEmpty());
  EXPECT_THAT(Findings("v210", "RGB3", {}, {49, 96, 1280}), IsEmpty());
}

TEST(Harness, CatchesAByteWrittenTooFarLeft) {
  const auto findings = Findings(
      "BGRA", "v210", {.beside = [](std::uint8_t* dst, std::size_t, auto...) { dst[-1] ^= 0x55; }});
  EXPECT_THAT(findings, Contains(HasSubstr("1 bytes before the start of row 0")));
  EXPECT_THAT(findings, Contains(HasSubstr("crashed: 1 bytes before the destination")));
}

TEST(Harness, CatchesAByteWrittenTooFarRight) {
  const auto findings = Findings(
      "BGRA", "v210",
      {.beside = [](std::uint8_t* dst, std::size_t rowBytes, auto...) { dst[rowBytes] ^= 0x55; }});
  EXPECT_THAT(findings, Contains(HasSubstr("0 bytes behind the end of row 0")));
  EXPECT_THAT(findings, Contains(HasSubstr("crashed: 0 bytes behind the last of the destination")));
}

TEST(Harness, CatchesARowBelowTheLast) {
  static int rows;
  rows = 0;
  const auto findings =
      Findings("BGRA", "32", {.beside = [](std::uint8_t* dst, std::size_t rowBytes, auto...) {
                 // Every third row is the last of its picture.
                 if (++rows % 3 == 0) dst[rowBytes + rowBytes / 2] ^= 0x55;
               }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesASourceByteReadBeforeTheRow) {
  const auto findings = Findings(
      "BGRA", "32", {.beside = [](std::uint8_t*, std::size_t, const std::uint8_t* src, auto...) {
        Read(src - 1);
      }});
  EXPECT_THAT(findings, Contains(HasSubstr("crashed: 1 bytes before the source")));
}

TEST(Harness, CatchesASourceByteReadBehindTheRow) {
  const auto findings =
      Findings("2vuy", "BGRA",
               {.beside = [](std::uint8_t*, std::size_t, const std::uint8_t* src,
                             std::size_t sourceBytes) { Read(src + sourceBytes); }});
  EXPECT_THAT(findings, Contains(HasSubstr("crashed: 0 bytes behind the last of the source")));
}

TEST(Harness, CatchesASourceThatIsWrittenTo) {
  const auto findings = Findings(
      "BGRA", "32", {.beside = [](std::uint8_t*, std::size_t, const std::uint8_t* src, auto...) {
        const_cast<std::uint8_t*>(src)[0] ^= 1;
      }});
  EXPECT_THAT(findings, Contains(HasSubstr("the source was written to")));
}

TEST(Harness, CatchesATailThatIsNotWritten) {
  const auto findings =
      Findings("BGRA", "v210", {.row = [](Bytes& right, const Bytes&) { right.pop_back(); }});
  EXPECT_THAT(findings, Contains(HasSubstr("probably never written")));
}

TEST(Harness, CatchesAnOutputThatDependsOnWhatLiesAround) {
  const auto findings = Findings("BGRA", "ay10",
                                 {.beside =
                                      [](std::uint8_t* dst, std::size_t rowBytes,
                                         const std::uint8_t* src, std::size_t sourceBytes) {
                                        // Stays inside the picture's memory for all rows but the
                                        // last.
                                        dst[rowBytes - 1] =
                                            src[sourceBytes - 1 + (rowBytes - sourceBytes)];
                                      }},
                                 {25});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesAStrideThatIsIgnored) {
  EXPECT_FALSE(Findings("BGRA", "32", {.ignoresStride = true}).empty());
}

TEST(Harness, CatchesSwappedChroma) {
  const auto findings = Findings("BGRA", "2vuy", {.row = [](Bytes& right, const Bytes&) {
                                   for (std::size_t i = 0; i + 2 < right.size(); i += 4) {
                                     std::swap(right[i], right[i + 2]);
                                   }
                                 }});
  EXPECT_THAT(findings, Contains(HasSubstr("row 0, byte 0, group at pixel 0: expected")));
}

TEST(Harness, CatchesTheOtherMatrix) {
  for (const char* destination : {"2vuy", "v210", "ay10"}) {
    const PixelFormatCode to = FormatNamed(destination).code;
    const auto findings =
        Findings("BGRA", destination, {.row = [to](Bytes& right, const Bytes& row) {
                   right = reference::ConvertRow(kBgra, to, kRec709, row.size() / 4, row);
                 }});
    // Every picture of every layout shows it, solid ones too.
    EXPECT_EQ(findings.size(), 3 * kContents.size() * kLayouts.size()) << destination;
  }
}

TEST(Harness, CatchesARoundingAddedBeforeAMatrixShift) {
  const auto findings =
      Findings("BGRA", "2vuy", {.row = [](Bytes& right, const Bytes& row) {
                 const auto& weights = reference::kScaledForward[0].y;
                 const auto pixels = reference::ReadRgbRow(kBgra, row, row.size() / 4);
                 for (std::size_t x = 0; x < pixels.size(); ++x) {
                   const Colour& c = pixels[x];
                   const int rounded = ((c.b * weights[0] + c.g * weights[1] + 16384) >> 15) +
                                       ((c.r * weights[2]) >> 15) + 16;
                   right[2 * x + 1] = static_cast<std::uint8_t>(rounded);
                 }
               }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesARoundingAddedWhereTenBitsAreCut) {
  const auto findings =
      Findings("R210", "BGRA", {.row = [](Bytes& right, const Bytes& row) {
                 auto pixels = reference::ReadRgbRow(kR210Full, row, row.size() / 4);
                 for (Colour& c : pixels) {
                   c = {std::min((c.r + 2) >> 2, 255), std::min((c.g + 2) >> 2, 255),
                        std::min((c.b + 2) >> 2, 255), 255};
                 }
                 right = reference::WriteRgbRow(kBgra, pixels);
               }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesOneFloorInPlaceOfTwo) {
  const auto findings =
      Findings("BGRA", "2vuy", {.row = [](Bytes& right, const Bytes& row) {
                 const auto& weights = reference::kScaledForward[0].y;
                 const auto pixels = reference::ReadRgbRow(kBgra, row, row.size() / 4);
                 for (std::size_t x = 0; x < pixels.size(); ++x) {
                   const Colour& c = pixels[x];
                   const int sum = c.b * weights[0] + c.g * weights[1] + c.r * weights[2];
                   right[2 * x + 1] = static_cast<std::uint8_t>((sum >> 15) + 16);
                 }
               }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesEvenAndOddGroupingExchanged) {
  const auto findings =
      Findings("2vuy", "BGRA", {.row = [](Bytes& right, const Bytes& row) {
                 // Chroma as it should be, floored together as the neighbour's would be.
                 const std::size_t width = row.size() / 2;
                 const auto pairs = reference::ReadYuvRow(k2vuy, row, width / 2 + 2);
                 std::vector<Colour> pixels(width);
                 for (std::size_t x = 0; x < width; ++x) {
                   reference::Chroma chroma = pairs[x / 2].chroma;
                   if (x % 2 == 1 && (x + 1 < width || width % 8 != 0)) {
                     chroma = {reference::Average(chroma.cb, pairs[x / 2 + 1].chroma.cb),
                               reference::Average(chroma.cr, pairs[x / 2 + 1].chroma.cr)};
                   }
                   pixels[x] = reference::Inverse(reference::kScaledInverse[0], x % 2 == 0,
                                                  pairs[x / 2].y[x % 2] - 16,
                                                  {chroma.cb - 128, chroma.cr - 128}, 13, 14, 255);
                   pixels[x].a = 255;
                 }
                 right = reference::WriteRgbRow(kBgra, pixels);
               }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesAlphaThatPassesWhereItMustNot) {
  const auto findings = Findings("BGRA", "RGBA", {.row = [](Bytes& right, const Bytes& row) {
                                   for (std::size_t i = 3; i < row.size(); i += 4) {
                                     right[i] = row[i];
                                   }
                                 }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, CatchesANeighbourTakenFromTheRowBefore) {
  static std::uint8_t carried;
  carried = 0;
  const auto findings = Findings(
      "BGRA", "2vuy", {.row = [](Bytes& right, const Bytes&) { std::swap(right[0], carried); }});
  EXPECT_FALSE(findings.empty());
}

TEST(Harness, ReportsAnInstructionThatTheProcessorLacks) {
  const auto findings = Findings("BGRA", "32", {.beside = [](auto...) { __builtin_trap(); }}, {24});
  EXPECT_THAT(findings, Each(HasSubstr("this processor lacks an instruction")));
  EXPECT_EQ(findings.size(), kContents.size() * kLayouts.size());
}

TEST(Harness, GoesOnBehindACrash) {
  static int call;
  call = 0;
  const auto findings = Findings("BGRA", "32", {.beside = [](auto...) {
                                   volatile std::uintptr_t nowhere = 16;
                                   if (call++ == 0) *reinterpret_cast<volatile char*>(nowhere) = 1;
                                 }});
  ASSERT_EQ(findings.size(), 1u);
  EXPECT_EQ(findings[0], "crashed far from source and destination");
}

}  // namespace
}  // namespace mixdecks::proof
