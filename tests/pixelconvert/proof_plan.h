// Which widths, contents and layouts each pair is compared over.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/pixelconvert/harness/content.h"
#include "tests/pixelconvert/harness/options.h"
#include "tests/pixelconvert/harness/validator.h"
#include "tests/pixelconvert/reference/grid.h"

namespace mixdecks::proof {

struct Plan {
  Effort effort;
  /// Rows of a picture: of the widths 1 to 300, and of the named ones.
  std::size_t rows, rowsOfNamedWidths;
  /// Pictures of each content.
  std::size_t repeats;
};

/// The plan of this run's options.
Plan ThePlan();

/// Every supported pair, those that depend on the colour space once for each. A converter that the
/// lookup does not give is null.
std::vector<Conversion> AllConversions();

/// What is wrong with options that restrict the proof to something that does not exist.
std::optional<std::string> ProblemOf(const Options& options);

/// The legal widths to compare for a conversion: 1 to 300, and widths that are of use or special.
std::vector<std::uint32_t> WidthsOf(const Conversion& conversion, const Plan& plan);

/// The pictures of a width; the same in every run with the same seed.
std::vector<Picture> PicturesOf(const Conversion& conversion, std::uint32_t width,
                                const Plan& plan);

/// The layouts in which a picture is converted.
std::vector<Layout> LayoutsOf(std::uint32_t width, std::size_t picture, const Plan& plan);

struct Totals {
  std::size_t pairs = 0, conversions = 0, widths = 0, calls = 0, pixels = 0;
};

/// What the plan amounts to for these conversions.
Totals Count(const Plan& plan, const std::vector<Conversion>& conversions);

/// The head of the test report.
std::string Announce(const Plan& plan);

}  // namespace mixdecks::proof
