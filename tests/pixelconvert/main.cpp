// The tests of the conversion library. Beside GoogleTest's options the program takes
//   --full             everything with everything; may run long
//   --small            a sample, the default under sanitizers and Windows
//   --seed=N           the seed of all random content
//   --pair=FROM:TO     only this pair in the proof
//   --width=N          only this width in the proof
//   --sse2-only        the processor must refuse later instructions
#include <gmock/gmock.h>

#include <iostream>

#include "tests/pixelconvert/harness/options.h"
#include "tests/pixelconvert/proof_plan.h"

int main(int count, char** arguments) {
  using namespace mixdecks::proof;
  if (const auto problem = ParseOptions(count, arguments)) {
    std::cerr << arguments[0] << ": " << *problem << '\n';
    return 2;
  }
  if (const auto problem = ProblemOf(TheOptions())) {
    std::cerr << arguments[0] << ": " << *problem << '\n';
    return 2;
  }
  testing::InitGoogleMock(&count, arguments);
  std::cout << Announce(ThePlan()) << std::flush;
  return RUN_ALL_TESTS();
}
