// The built library's resources beside the tables they must agree with.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string_view>

#include "dialog/dialog_templates.h"
#include "tests/library/portable_executable.h"

namespace mixdecks {
namespace {

using testing::BlockReader;
using testing::PortableExecutable;
using testing::ResourceKey;

constexpr std::uint32_t kLanguage = 3081;
constexpr char kBitmap[] = "2";
constexpr char kDialog[] = "5";
constexpr char kVersion[] = "16";

class Resources : public ::testing::Test {
 protected:
  std::vector<std::uint8_t> Find(const char* type, const char* name) const {
    const auto found = resources.find(ResourceKey{type, name, kLanguage});
    EXPECT_NE(found, resources.end()) << type << " " << name;
    return found == resources.end() ? std::vector<std::uint8_t>() : found->second;
  }

  const std::map<ResourceKey, std::vector<std::uint8_t>> resources =
      PortableExecutable("Mixdecks.8bp").Resources();
};

std::string Ascii(const char16_t* text) {
  const std::u16string_view view(text);
  return std::string(view.begin(), view.end());
}

/// Text, or a number in its place.
struct TextOrNumber {
  std::string text;
  std::uint16_t number = 0;
};

TextOrNumber ReadTextOrNumber(BlockReader& reader) {
  TextOrNumber value;
  const std::uint16_t first = reader.Word();
  if (first == 0xFFFF) {
    value.number = reader.Word();
  } else if (first != 0) {
    value.text = static_cast<char>(first) + reader.WideText();
  }
  return value;
}

void ExpectControl(BlockReader& reader, const ControlTemplate& expected) {
  SCOPED_TRACE("control " + std::to_string(expected.id) + " " + Ascii(expected.text));
  reader.Align();
  EXPECT_EQ(reader.Long(), 0U) << "help";
  EXPECT_EQ(reader.Long(), expected.extendedStyle);
  EXPECT_EQ(reader.Long(), expected.style);
  for (const std::int16_t side : {expected.left, expected.top, expected.width, expected.height}) {
    EXPECT_EQ(static_cast<std::int16_t>(reader.Word()), side);
  }
  EXPECT_EQ(static_cast<std::int32_t>(reader.Long()), expected.id);
  EXPECT_EQ(ReadTextOrNumber(reader).number, static_cast<std::uint16_t>(expected.windowClass));
  const TextOrNumber title = ReadTextOrNumber(reader);
  EXPECT_EQ(title.text, Ascii(expected.text));
  EXPECT_EQ(title.number, expected.picture);
  EXPECT_EQ(reader.Word(), 0U) << "creation data";
}

void ExpectDialog(const std::vector<std::uint8_t>& block, const DialogTemplate& expected) {
  BlockReader reader(block);
  EXPECT_EQ(reader.Word(), 1U);
  EXPECT_EQ(reader.Word(), 0xFFFFU) << "an extended template";
  EXPECT_EQ(reader.Long(), 0U) << "help";
  EXPECT_EQ(reader.Long(), 0U) << "extended style";
  EXPECT_EQ(reader.Long(), expected.style);
  ASSERT_EQ(reader.Word(), expected.controls.size());
  EXPECT_EQ(reader.Word(), 0U) << "left";
  EXPECT_EQ(reader.Word(), 0U) << "top";
  EXPECT_EQ(reader.Word(), expected.width);
  EXPECT_EQ(reader.Word(), expected.height);
  EXPECT_EQ(reader.Word(), 0U) << "menu";
  EXPECT_EQ(reader.Word(), 0U) << "window class";
  EXPECT_EQ(reader.WideText(), Ascii(expected.caption));
  EXPECT_EQ(reader.Word(), expected.fontPoints);
  reader.Long();  // weight, slant and character set are the font's own
  EXPECT_EQ(reader.WideText(), Ascii(expected.fontName));
  for (const ControlTemplate& control : expected.controls)
    ExpectControl(reader, control);
}

TEST_F(Resources, AreTheseAndNoOthers) {
  std::vector<std::pair<std::string, std::string>> found;
  for (const auto& [key, block] : resources) {
    EXPECT_EQ(key.language, kLanguage);
    found.emplace_back(key.type, key.name);
  }
  const std::vector<std::pair<std::string, std::string>> expected = {
      {kVersion, "1"}, {kBitmap, "1009"}, {kDialog, "103"}, {kDialog, "104"}, {"PIPL", "16000"}};
  EXPECT_EQ(found, expected);
}

TEST_F(Resources, HoldTheExportDialog) {
  EXPECT_EQ(kExportDialogTemplate.controls.size(), 18U);
  ExpectDialog(Find(kDialog, "104"), kExportDialogTemplate);
}

TEST_F(Resources, HoldTheAboutBox) {
  ExpectDialog(Find(kDialog, "103"), kAboutDialogTemplate);
}

TEST_F(Resources, DeclareThePluginByteForByte) {
  using std::string_view_literals::operator""sv;
  constexpr std::string_view kExpected =
      "\x01\x00\x00\x00\x00\x00\x06\x00\x00\x00"
      "MIB8dnik\x00\x00\x00\x00\x04\x00\x00\x00MEB8"
      "MIB8eman\x00\x00\x00\x00\x20\x00\x00\x00\x1BORVA Switcher Media Pool...\x00\x00\x00\x00"
      "MIB8srev\x00\x00\x00\x00\x04\x00\x00\x00\x00\x00\x04\x00"
      "MIB84668\x00\x00\x00\x00\x14\x00\x00\x00MixdecksExportMain\x00\x00"
      "MIB8edom\x00\x00\x00\x00\x04\x00\x00\x00\x10\x00\x00\x00"
      "MIB8lbne\x00\x00\x00\x00\x2C\x00\x00\x00in (PSHOP_ImageMode, RGBMode, RGB48Mode)"
      "\x00\x00\x00\x00"sv;
  const std::vector<std::uint8_t> block = Find("PIPL", "16000");
  EXPECT_EQ(std::string(block.begin(), block.end()), kExpected);
  EXPECT_EQ(block.size(), 10U + 6 * 16 + 4 + 32 + 4 + 20 + 4 + 44);
}

TEST_F(Resources, HoldTheBannerAtItsSize) {
  BlockReader reader(Find(kBitmap, "1009"));
  EXPECT_EQ(reader.Long(), 40U) << "header";
  EXPECT_EQ(reader.Long(), 473U);
  EXPECT_EQ(reader.Long(), 66U);
  EXPECT_EQ(reader.Word(), 1U) << "planes";
  EXPECT_EQ(reader.Word(), 24U);
  EXPECT_EQ(reader.Long(), 0U) << "uncompressed";
  EXPECT_EQ(Find(kBitmap, "1009").size(), 40U + 66 * 1420);
}

TEST_F(Resources, HoldABannerThatShowsSomething) {
  const std::vector<std::uint8_t> picture = Find(kBitmap, "1009");
  std::set<std::array<std::uint8_t, 3>> colours;
  for (std::size_t row = 40; row + 1420 <= picture.size(); row += 1420) {
    for (std::size_t pixel = row; pixel < row + 473 * 3; pixel += 3)
      colours.insert({picture[pixel], picture[pixel + 1], picture[pixel + 2]});
  }
  EXPECT_GT(colours.size(), 50U);
}

/// A version block's values: key to text, nested blocks flattened.
void ReadVersionBlock(BlockReader& reader, std::map<std::string, std::string>& values) {
  const std::size_t start = reader.Position();
  const std::size_t length = reader.Word();
  const std::uint16_t valueLength = reader.Word();
  const bool isText = reader.Word() == 1;
  const std::string key = reader.WideText();
  reader.Align();
  if (valueLength > 0) values[key] = isText ? reader.WideText() : reader.Bytes(valueLength);
  reader.Align();
  while (reader.Position() < start + length)
    ReadVersionBlock(reader, values);
}

TEST_F(Resources, SayTheVersionTheSameEverywhere) {
  BlockReader reader(Find(kVersion, "1"));
  std::map<std::string, std::string> values;
  ReadVersionBlock(reader, values);
  const std::map<std::string, std::string> expected = {
      {"CompanyName", "Tollenmark Design"},
      {"FileDescription", "ORVA Mixdecks Adobe Photoshop Plug In"},
      {"FileVersion", "1.0.0.0"},
      {"InternalName", "Export"},
      {"LegalCopyright", "Copyright (C) Tollenmark Design. All rights reserved."},
      {"OriginalFilename", "Mixdecks.8bp"},
      {"ProductName", "Mixdecks"},
      {"ProductVersion", "1.0"},
      {"Translation", std::string("\x09\x0C\xB0\x04")},
  };
  const std::string fixed = values["VS_VERSION_INFO"];
  values.erase("VS_VERSION_INFO");
  EXPECT_EQ(values, expected);

  ASSERT_EQ(fixed.size(), 52U);
  BlockReader numbers({fixed.begin(), fixed.end()});
  EXPECT_EQ(numbers.Long(), 0xFEEF04BDU);
  numbers.Long();
  for (const char* version : {"file", "product"}) {
    EXPECT_EQ(numbers.Long(), 0x00010000U) << version;
    EXPECT_EQ(numbers.Long(), 0U) << version;
  }
  numbers.Long();
  numbers.Long();
  numbers.Long();
  EXPECT_EQ(numbers.Long(), 2U) << "a library";
}

}  // namespace
}  // namespace mixdecks
