// Picture files as documents: every format, every mode, and every way to be broken.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <functional>

#include "tests/tools/picture_files.h"
#include "tools/picture/picture_decoder.h"
#include "tools/picture/picture_error.h"
#include "tools/picture/picture_limits.h"

namespace mixdecks {
namespace {

using test::Bytes;
using test::ByteWriter;
using testing::ElementsAre;
using testing::HasSubstr;

Bytes Samples8(const HostChannel& channel) {
  Bytes samples;
  for (const std::byte sample : channel.samples) {
    samples.push_back(std::to_integer<std::uint8_t>(sample));
  }
  return samples;
}

std::vector<std::uint16_t> Samples16(const HostChannel& channel) {
  std::vector<std::uint16_t> samples(channel.samples.size() / 2);
  std::memcpy(samples.data(), channel.samples.data(), channel.samples.size());
  return samples;
}

std::string ErrorOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const PictureError& error) {
    EXPECT_FALSE(error.Remedy().empty());
    return error.what();
  }
  return "no error";
}

std::string ErrorOf(const Bytes& file) {
  return ErrorOf([&file] { DecodePicture(file); });
}

Bytes Cut(Bytes file, std::size_t bytes) {
  file.resize(file.size() - bytes);
  return file;
}

// Two pixels: red, green, blue 10, 20, 30 and 40, 50, 60.
const Bytes kRgb = {10, 20, 30, 40, 50, 60};

void ExpectTwoPixels(const HostDocument& document) {
  EXPECT_EQ(document.width, 2);
  EXPECT_EQ(document.height, 1);
  EXPECT_EQ(document.imageMode, kImageModeRgb);
  EXPECT_EQ(document.depth, 8);
  ASSERT_EQ(document.composite.size(), 3u);
  EXPECT_THAT(Samples8(document.composite[0]), ElementsAre(10, 40));
  EXPECT_THAT(Samples8(document.composite[1]), ElementsAre(20, 50));
  EXPECT_THAT(Samples8(document.composite[2]), ElementsAre(30, 60));
}

TEST(PictureTest, ReadsRgbOfEveryLosslessFormat) {
  const std::pair<PictureFormat, Bytes> files[] = {
      {PictureFormat::kPng, test::PngFile(2, 1, test::kPngRgb, 8, kRgb)},
      {PictureFormat::kBmp, test::BmpFile(2, 1, kRgb)},
      {PictureFormat::kPnm, test::PnmFile('6', 2, 1, kRgb)},
      {PictureFormat::kPsd,
       test::PsdFile({.width = 2, .channels = {{10, 40}, {20, 50}, {30, 60}}})},
      {PictureFormat::kPsd,
       test::PsdFile({.width = 2, .channels = {{10, 40}, {20, 50}, {30, 60}}, .packed = true})},
  };
  for (const auto& [format, file] : files) {
    SCOPED_TRACE(PictureFormatName(format));
    const Picture picture = DecodePicture(file);
    EXPECT_EQ(picture.format, format);
    EXPECT_FALSE(picture.document.transparency);
    EXPECT_EQ(picture.document.planes, 3);
    ExpectTwoPixels(picture.document);
  }
}

TEST(PictureTest, ReadsJpeg) {
  const Bytes rgb(8 * 8 * 3, 128);
  const Picture picture = DecodePicture(test::JpegFile(8, 8, rgb));
  EXPECT_EQ(picture.format, PictureFormat::kJpeg);
  EXPECT_EQ(picture.document.imageMode, kImageModeRgb);
  EXPECT_EQ(picture.document.width, 8);
  EXPECT_THAT(Samples8(picture.document.composite.at(1)), testing::Each(testing::Eq(128)));
}

TEST(PictureTest, MakesAlphaTheTransparency) {
  const Bytes rgba = {10, 20, 30, 70, 40, 50, 60, 80};
  const HostDocument document =
      DecodePicture(test::PngFile(2, 1, test::kPngRgba, 8, rgba)).document;
  ExpectTwoPixels(document);
  ASSERT_TRUE(document.transparency);
  EXPECT_THAT(Samples8(*document.transparency), ElementsAre(70, 80));
  EXPECT_TRUE(document.extraAlpha.empty());
  EXPECT_EQ(document.planes, 4);
}

TEST(PictureTest, KeepsSixteenBitsOnTheHostsScale) {
  const Bytes rgb = {0, 0, 0x80, 0, 0xFF, 0xFF};
  const Bytes pnm = ByteWriter().Text("P6 1 1 65535\n").Raw(rgb).Done();
  const Bytes files[] = {
      test::PngFile(1, 1, test::kPngRgb, 16, rgb), pnm,
      test::PsdFile({.depth = 16, .channels = {{0, 0}, {0x80, 0}, {0xFF, 0xFF}}}),
      test::PsdFile({.depth = 16, .channels = {{0, 0}, {0x80, 0}, {0xFF, 0xFF}}, .packed = true})};
  for (const Bytes& file : files) {
    const HostDocument document = DecodePicture(file).document;
    EXPECT_EQ(document.depth, 16);
    ASSERT_EQ(document.composite.size(), 3u);
    EXPECT_THAT(Samples16(document.composite[0]), ElementsAre(0));
    EXPECT_THAT(Samples16(document.composite[1]), ElementsAre(16384));
    EXPECT_THAT(Samples16(document.composite[2]), ElementsAre(32768));
  }
}

TEST(PictureTest, TellsTransparencyOfAPsdFromSavedAlphaChannels) {
  test::PsdRecipe recipe{.channels = {{10}, {20}, {30}, {255}, {7}}};
  HostDocument document = DecodePicture(test::PsdFile(recipe)).document;
  EXPECT_FALSE(document.transparency);
  ASSERT_EQ(document.extraAlpha.size(), 2u);
  EXPECT_THAT(Samples8(document.extraAlpha[1]), ElementsAre(7));

  for (const int depth : {8, 16}) {
    recipe.depth = depth;
    recipe.transparency = true;
    if (depth == 16) recipe.channels = {{0, 0}, {0, 0}, {0, 0}, {0xFF, 0xFF}, {0, 0}};
    document = DecodePicture(test::PsdFile(recipe)).document;
    ASSERT_TRUE(document.transparency) << depth;
    EXPECT_EQ(document.extraAlpha.size(), 1u) << depth;
    EXPECT_EQ(document.planes, 5);
  }
}

TEST(PictureTest, TakesTheWhiteOutOfATransparentPsd) {
  // Half transparent black over white, full colour, and nothing at all.
  const HostDocument document =
      DecodePicture(
          test::PsdFile({.width = 3,
                         .channels = {{127, 9, 255}, {255, 9, 255}, {191, 9, 255}, {128, 255, 0}},
                         .transparency = true}))
          .document;
  EXPECT_THAT(Samples8(document.composite[0]), ElementsAre(0, 9, 255));
  EXPECT_THAT(Samples8(document.composite[1]), ElementsAre(255, 9, 255));
  EXPECT_THAT(Samples8(document.composite[2]), ElementsAre(127, 9, 255));
}

TEST(PictureTest, KeepsTheModeOfWhatIsNotRgb) {
  const std::pair<ColourMode, Bytes> files[] = {
      {ColourMode::kGrey, test::PngFile(2, 1, test::kPngGrey, 8, {1, 2})},
      {ColourMode::kGrey, test::PnmFile('5', 2, 1, {1, 2})},
      {ColourMode::kGrey, test::PsdFile({.width = 2, .mode = 1, .channels = {{1, 2}}})},
      {ColourMode::kIndexed, test::PngFile(2, 1, test::kPngIndexed, 8, {1, 2})},
      {ColourMode::kCmyk, test::EmptyJpegFile(2, 1, 4)},
      {ColourMode::kCmyk,
       test::PsdFile({.width = 2, .mode = 4, .channels = {{1, 2}, {1, 2}, {1, 2}, {1, 2}}})},
      {ColourMode::kLab,
       test::PsdFile({.width = 2, .mode = 9, .channels = {{1, 2}, {1, 2}, {1, 2}}})},
  };
  for (const auto& [mode, file] : files) {
    const Picture picture = DecodePicture(file);
    SCOPED_TRACE(std::string(PictureFormatName(picture.format)));
    EXPECT_EQ(picture.document.imageMode, static_cast<std::int16_t>(mode));
    EXPECT_EQ(picture.document.width, 2);
    EXPECT_EQ(picture.document.height, 1);
  }
}

TEST(PictureTest, ConvertsGreyscaleAndIndexedColourToRgb) {
  HostDocument grey = DecodePicture(test::PngFile(2, 1, test::kPngGrey, 8, {1, 2})).document;
  ConvertToRgb(grey);
  EXPECT_EQ(grey.imageMode, kImageModeRgb);
  ASSERT_EQ(grey.composite.size(), 3u);
  for (const HostChannel& channel : grey.composite) {
    EXPECT_THAT(Samples8(channel), ElementsAre(1, 2));
  }

  HostDocument indexed = DecodePicture(test::PngFile(1, 1, test::kPngIndexed, 8, {5})).document;
  ConvertToRgb(indexed);
  EXPECT_THAT(Samples8(indexed.composite[0]), ElementsAre(5));
  EXPECT_THAT(Samples8(indexed.composite[1]), ElementsAre(250));
  EXPECT_THAT(Samples8(indexed.composite[2]), ElementsAre(7));

  HostDocument cmyk = DecodePicture(test::EmptyJpegFile(2, 1, 4)).document;
  EXPECT_THAT(ErrorOf([&] { ConvertToRgb(cmyk); }), HasSubstr("CMYK mode cannot be converted"));
}

TEST(PictureTest, ConvertsDepthBothWaysWithoutLoss) {
  Bytes ramp(256);
  for (std::size_t i = 0; i < ramp.size(); ++i)
    ramp[i] = static_cast<std::uint8_t>(i);
  HostDocument document = DecodePicture(test::PnmFile('5', 256, 1, ramp)).document;
  ConvertDepth(document, 16);
  EXPECT_EQ(document.depth, 16);
  EXPECT_EQ(Samples16(document.composite[0])[255], 32768);
  ConvertDepth(document, 8);
  EXPECT_EQ(Samples8(document.composite[0]), ramp);
}

TEST(PictureTest, AddsAGreyscalePictureAsAlphaChannel) {
  HostDocument document = DecodePicture(test::PngFile(2, 1, test::kPngRgb, 8, kRgb)).document;
  AddAlphaChannel(document, DecodePicture(test::PnmFile('5', 2, 1, {7, 8})).document);
  ASSERT_EQ(document.extraAlpha.size(), 1u);
  EXPECT_THAT(Samples8(document.extraAlpha[0]), ElementsAre(7, 8));
  EXPECT_EQ(document.planes, 4);

  const auto add = [&document](const Bytes& file) {
    return ErrorOf([&] { AddAlphaChannel(document, DecodePicture(file).document); });
  };
  EXPECT_THAT(add(test::PnmFile('5', 1, 1, {7})), HasSubstr("1 x 1 and the picture is 2 x 1"));
  EXPECT_THAT(add(test::PnmFile('6', 2, 1, kRgb)), HasSubstr("greyscale"));
}

TEST(PictureTest, RefusesWhatIsNoPicture) {
  EXPECT_THAT(ErrorOf(Bytes{}), HasSubstr("empty"));
  EXPECT_THAT(ErrorOf(Bytes{'h', 'e', 'l', 'l', 'o'}), HasSubstr("not a picture"));
  EXPECT_THAT(ErrorOf(ByteWriter().Text("GIF89a").Done()), HasSubstr("not a picture"));
}

TEST(PictureTest, RefusesEveryTruncation) {
  const Bytes files[] = {
      test::PngFile(2, 1, test::kPngRgb, 8, kRgb),
      test::BmpFile(2, 1, kRgb),
      test::PnmFile('6', 2, 1, kRgb),
      test::PsdFile({.width = 2, .channels = {{10, 40}, {20, 50}, {30, 60}}}),
      test::PsdFile({.width = 2, .channels = {{10, 40}, {20, 50}, {30, 60}}, .packed = true}),
      test::JpegFile(8, 8, Bytes(8 * 8 * 3, 200)),
  };
  for (const Bytes& file : files) {
    for (std::size_t cut = 1; cut < file.size(); ++cut) {
      EXPECT_NE(ErrorOf(Cut(file, cut)), "no error")
          << file.size() << " bytes of " << file[1] << file[2] << " without the last " << cut;
    }
  }
  EXPECT_THAT(ErrorOf(Cut(files[0], 20)), HasSubstr("ends early"));
}

TEST(PictureTest, SurvivesEveryFlippedByte) {
  const Bytes files[] = {
      test::PngFile(2, 1, test::kPngIndexed, 8, {1, 2}),
      test::BmpFile(2, 1, kRgb),
      test::PsdFile({.width = 2,
                     .channels = {{10, 40}, {20, 50}, {30, 60}, {9, 9}},
                     .packed = true,
                     .transparency = true}),
      test::JpegFile(8, 8, Bytes(8 * 8 * 3, 200)),
  };
  for (const Bytes& file : files) {
    for (std::size_t at = 0; at < file.size(); ++at) {
      for (const std::uint8_t flip : Bytes{0xFF, 0x80, 0x01}) {
        Bytes damaged = file;
        damaged[at] ^= flip;
        // Either a picture or an error, and nothing that a sanitizer minds.
        ErrorOf(damaged);
      }
    }
  }
}

TEST(PictureTest, NoticesADamagedPng) {
  Bytes file = test::PngFile(2, 1, test::kPngRgb, 8, kRgb);
  file[file.size() - 20] ^= 1;
  EXPECT_THAT(ErrorOf(file), HasSubstr("checksum of its IDAT chunk"));
}

TEST(PictureTest, RefusesSidesThatNoDocumentHas) {
  EXPECT_THAT(ErrorOf(test::PngFile(0, 5, test::kPngRgb, 8, {})), HasSubstr("0 x 5"));
  EXPECT_THAT(ErrorOf(test::PnmFile('5', 5, 0, {})), HasSubstr("5 x 0"));
  EXPECT_THAT(ErrorOf(test::EmptyJpegFile(5, 0, 3)), HasSubstr("5 x 0"));
  EXPECT_THAT(ErrorOf(test::PngFile(32768, 1, test::kPngRgb, 8, {})), HasSubstr("too large"));
  EXPECT_THAT(ErrorOf(test::PngFile(0xFFFFFFFF, 0xFFFFFFFF, test::kPngRgb, 8, {})),
              HasSubstr("4294967295 x 4294967295"));
  EXPECT_THAT(ErrorOf(test::PngFile(32767, 32767, test::kPngRgb, 8, {})),
              HasSubstr("more than 2 GB"));
  EXPECT_THAT(ErrorOf(test::PsdFile({.width = 32767, .height = 32767, .channels = {{}, {}, {}}})),
              HasSubstr("ends early"));
}

/// A picture of some size and depth that cannot be used, and a size told that can.
struct LargePicture {
  PictureFormat format;
  std::uint32_t width;
  std::uint32_t height;
  int depth;
  int pngChannels;
  const char* fittingSize;
};

TEST(PictureTest, TellsTheLargestAreas) {
  constexpr auto png = PictureFormat::kPng;
  constexpr auto psd = PictureFormat::kPsd;
  const LargePicture cases[] = {
      {psd, 32767, 16385, 8, 4, "32766 x 16384"}, {psd, 20000, 15000, 16, 4, "18918 x 14188"},
      {png, 16384, 16385, 8, 4, "16383 x 16384"}, {png, 20000, 15000, 8, 4, "18918 x 14188"},
      {png, 20000, 17896, 8, 3, "19999 x 17895"}, {png, 16385, 16383, 16, 4, "16384 x 16382"},
  };
  for (const LargePicture& large : cases) {
    SCOPED_TRACE(large.fittingSize);
    PictureHeader header{large.format, large.width, large.height, large.depth};
    header.pngChannels = large.pngChannels;
    try {
      CheckArea(header);
      ADD_FAILURE() << "not refused";
    } catch (const PictureError& error) {
      EXPECT_THAT(error.what(), HasSubstr(std::to_string(large.width)));
      EXPECT_THAT(error.Remedy(), HasSubstr(large.fittingSize));
    }
    std::sscanf(large.fittingSize, "%u x %u", &header.width, &header.height);
    EXPECT_NO_THROW(CheckArea(header));
  }
  EXPECT_THAT(ErrorOf(test::PngFile(20000, 15000, test::kPngRgba, 8, {})),
              HasSubstr("268435456 pixels"));
}

// A byte order, a directory behind it, and in it a width and the orientation.
Bytes Exif(bool little, std::uint32_t orientation) {
  ByteWriter writer;
  if (little) {
    writer.Text("II").Little16(42).Little32(10).Raw({0, 0}).Little16(2);
    writer.Little16(0x0100).Little16(3).Little32(1).Little32(7);
    return writer.Little16(0x0112).Little16(3).Little32(1).Little32(orientation).Done();
  }
  writer.Text("MM").Big16(42).Big32(8).Big16(1);
  return writer.Big16(0x0112).Big16(3).Big32(1).Big16(orientation).Big16(0).Done();
}

Bytes Insert(Bytes file, std::size_t place, const Bytes& piece) {
  file.insert(file.begin() + static_cast<std::ptrdiff_t>(place), piece.begin(), piece.end());
  return file;
}

Bytes JpegWithExif(const Bytes& exif) {
  const auto length = static_cast<std::uint32_t>(exif.size()) + 8;
  const Bytes segment =
      ByteWriter().Big16(0xFFE1).Big16(length).Text("Exif").Big16(0).Raw(exif).Done();
  return Insert(test::JpegFile(8, 8, Bytes(8 * 8 * 3, 200)), 2, segment);
}

TEST(PictureTest, TellsHowThePictureAsksToBeTurned) {
  EXPECT_EQ(DecodePicture(JpegWithExif(Exif(true, 6))).orientation, 6);
  EXPECT_EQ(DecodePicture(JpegWithExif(Exif(false, 3))).orientation, 3);
  EXPECT_EQ(DecodePicture(Insert(test::PngFile(2, 1, test::kPngRgb, 8, kRgb), 33,
                                 test::PngChunk("eXIf", Exif(false, 8))))
                .orientation,
            8);
  EXPECT_EQ(DecodePicture(test::JpegFile(8, 8, Bytes(8 * 8 * 3, 200))).orientation, 1);
  EXPECT_EQ(DecodePicture(JpegWithExif(Exif(true, 9))).orientation, 1);
  for (std::size_t cut = 1; cut < 20; ++cut)
    EXPECT_EQ(DecodePicture(JpegWithExif(Cut(Exif(false, 3), cut))).orientation, 1) << cut;
}

TEST(PictureTest, ReadsTheLongestRow) {
  const Bytes row(32767, 3);
  EXPECT_EQ(DecodePicture(test::PngFile(32767, 1, test::kPngGrey, 8, row)).document.width, 32767);
  EXPECT_EQ(DecodePicture(test::PngFile(1, 32767, test::kPngGrey, 8, row)).document.height, 32767);
}

TEST(PictureTest, RefusesPsdVariantsItCannotShowTruthfully) {
  EXPECT_THAT(ErrorOf(test::PsdFile({.channels = {{1}, {2}, {3}}, .mergedPicture = false})),
              HasSubstr("without its merged picture"));
  EXPECT_THAT(ErrorOf(test::PsdFile({.depth = 32, .channels = {{}, {}, {}}})),
              HasSubstr("32 bits per channel"));
  EXPECT_THAT(ErrorOf(test::PsdFile({.channels = {{1}, {2}}})), HasSubstr("colour channel"));
  EXPECT_THAT(ErrorOf(test::PsdFile({.channels = {}})), HasSubstr("0 channels"));
}

}  // namespace
}  // namespace mixdecks
