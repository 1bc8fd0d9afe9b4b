// The shipped file itself: one export, system imports alone, hardened, without time and paths.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string_view>

#include "tests/library/portable_executable.h"

namespace mixdecks {
namespace {

using testing::PortableExecutable;

constexpr char kFileName[] = "Mixdecks.8bp";

constexpr std::uint16_t kHighEntropy = 0x0020;
constexpr std::uint16_t kDynamicBase = 0x0040;
constexpr std::uint16_t kNoExecute = 0x0100;

class LibraryFile : public ::testing::Test {
 protected:
  bool Contains(std::string_view text) const {
    return std::ranges::search(library.File(), text).begin() != library.File().end();
  }
  PortableExecutable library{kFileName};
};

TEST_F(LibraryFile, IsA64BitLibrary) {
  EXPECT_TRUE(library.IsLibrary());
  EXPECT_EQ(library.Machine(), 0x8664);
}

TEST_F(LibraryFile, ExportsTheEntryAlone) {
  EXPECT_EQ(library.ExportedNames(), std::vector<std::string>{"MixdecksExportMain"});
  EXPECT_EQ(library.ExportedModuleName(), "MixdecksExport.dll");
}

TEST_F(LibraryFile, ImportsSystemLibrariesAlone) {
  std::vector<std::string> imported = library.ImportedLibraries();
  for (std::string& name : imported) {
    std::ranges::transform(name, name.begin(), [](unsigned char character) {
      return static_cast<char>(std::tolower(character));
    });
  }
  EXPECT_THAT(imported, ::testing::UnorderedElementsAre("advapi32.dll", "gdi32.dll", "gdiplus.dll",
                                                        "kernel32.dll", "msvcrt.dll", "ole32.dll",
                                                        "oleaut32.dll", "user32.dll"))
      << "each that is missing here is no longer needed";
  EXPECT_FALSE(library.ImportsLater()) << "nothing is loaded behind this list's back";
}

TEST_F(LibraryFile, IsTheSameUnderBothNames) {
  EXPECT_TRUE(library.File() == PortableExecutable("MixdecksExport.dll").File());
}

TEST_F(LibraryFile, IsHardened) {
  EXPECT_EQ(library.DllCharacteristics() & (kHighEntropy | kDynamicBase | kNoExecute),
            kHighEntropy | kDynamicBase | kNoExecute);
  EXPECT_TRUE(library.HasRelocations()) << "it could not be moved";
}

TEST_F(LibraryFile, CarriesNoTime) {
  EXPECT_EQ(library.TimeStamp(), 0U);
  EXPECT_EQ(library.ExportTimeStamp(), 0U);
}

TEST_F(LibraryFile, CarriesNoPathOfTheBuild) {
  ASSERT_TRUE(Contains("MixdecksExportMain")) << "the search finds what is there";
  for (const char* path : {MIXDECKS_SOURCE_DIR, MIXDECKS_BINARY_DIR, "/home/", "/root/", "/tmp/",
                           ".cpp", ".debug_info"}) {
    EXPECT_FALSE(Contains(path)) << path;
  }
}

}  // namespace
}  // namespace mixdecks
