// Every pair over every legal width, content and layout, compared with the reference.
#include <gtest/gtest.h>

#include "tests/pixelconvert/proof_plan.h"

namespace mixdecks::proof {
namespace {

class Proof : public testing::TestWithParam<reference::Format> {};

// One conversion's findings are enough at a few widths: the rest is mostly the same fault.
constexpr std::size_t kFindingsOfConversion = 3;

struct Outcome {
  std::size_t calls = 0, pixels = 0, findings = 0;
};

void CheckWidth(Validator& validator, const Conversion& conversion, std::uint32_t width,
                const Plan& plan, Outcome& outcome) {
  const std::vector<Picture> pictures = PicturesOf(conversion, width, plan);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    for (const Layout& layout : LayoutsOf(width, i, plan)) {
      const std::string finding = validator.Check(conversion, pictures[i], layout);
      outcome.calls += 2;
      outcome.pixels += 2 * pictures[i].source.size() * width;
      if (finding.empty()) continue;
      ++outcome.findings;
      ADD_FAILURE() << Describe(conversion) << ", width " << width << ", "
                    << kContents[i % kContents.size()].name << " content, " << layout.name << ":\n"
                    << finding << "\nrepeat with: test_pixelconvert "
                    << RepeatArguments(conversion.source->name, conversion.destination->name,
                                       width);
      return;
    }
  }
}

TEST_P(Proof, EqualsTheReference) {
  const Plan plan = ThePlan();
  std::vector<Conversion> conversions;
  for (const Conversion& conversion : AllConversions()) {
    if (conversion.source->code == GetParam().code) conversions.push_back(conversion);
  }
  if (conversions.empty()) GTEST_SKIP() << "the options of this run leave no pair of this format";

  Validator validator;
  Outcome all;
  for (const Conversion& conversion : conversions) {
    Outcome outcome;
    for (const std::uint32_t width : WidthsOf(conversion, plan)) {
      if (outcome.findings == kFindingsOfConversion) break;
      CheckWidth(validator, conversion, width, plan, outcome);
    }
    all.calls += outcome.calls;
    all.pixels += outcome.pixels;
    all.findings += outcome.findings;
  }
  if (all.findings > 0) return;
  const Totals announced = Count(plan, conversions);
  EXPECT_EQ(all.calls, announced.calls);
  EXPECT_EQ(all.pixels, announced.pixels);
}

INSTANTIATE_TEST_SUITE_P(From, Proof, testing::ValuesIn(reference::kFormats),
                         [](const testing::TestParamInfo<reference::Format>& format) {
                           return "Format_" + std::string(format.param.name);
                         });

}  // namespace
}  // namespace mixdecks::proof
