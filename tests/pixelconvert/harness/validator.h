// Runs a converter over a picture in guarded memory and says what is wrong with what it did.
//
// The conversion runs twice, over complementary fills of everything around and under the two
// pictures. So a byte that was promised and not written shows, and so does a byte that depends on
// anything outside the source rows. Whatever lies between, before and behind the destination rows
// must keep its content, and the source all of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "pixelconvert/pixel_converter.h"
#include "tests/pixelconvert/harness/guarded_region.h"
#include "tests/pixelconvert/harness/layout.h"
#include "tests/pixelconvert/harness/placed_picture.h"
#include "tests/pixelconvert/reference/formats.h"

namespace mixdecks::proof {

/// A converter and what it claims to do.
struct Conversion {
  const reference::Format* source;
  const reference::Format* destination;
  ColourSpaceIndex colourSpace;
  PixelConverter converter;
};

/// "BGRA to ay10, colour space 1"
std::string Describe(const Conversion& conversion);

using Rows = std::vector<std::vector<std::uint8_t>>;

/// Source rows and what each must become.
struct Picture {
  std::uint32_t width;
  Rows source;
  Rows expected;
};

/// The picture of these source rows, its expected rows made by the reference.
Picture MakePicture(const Conversion& conversion, std::uint32_t width, Rows source);

class Validator {
 public:
  Validator();

  /// Empty when all is well; otherwise what happened, where, with expected and actual bytes.
  std::string Check(const Conversion& conversion, const Picture& picture, const Layout& layout);

 private:
  std::string CheckOnce(const Conversion& conversion, const Picture& picture,
                        const PlacedPicture& source, const PlacedPicture& destination,
                        const std::vector<std::uint8_t>& noise);
  void Grow(std::size_t bytes);

  std::unique_ptr<GuardedRegion> source_, destination_;
  std::vector<std::uint8_t> noise_, complement_;
  std::vector<std::uint8_t> expectedSource_, expectedDestination_;
};

}  // namespace mixdecks::proof
