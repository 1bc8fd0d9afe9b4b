// That the emulated old processor is as old as it claims: if it ran later instructions, a proof on
// it would prove nothing.
#include <gtest/gtest.h>

#include "tests/pixelconvert/harness/fault_trap.h"
#include "tests/pixelconvert/harness/options.h"

namespace mixdecks::proof {
namespace {

void ExpectRefused(const char* name, const std::function<void()>& instruction) {
  const auto fault = RunTrapped(instruction);
  ASSERT_TRUE(fault.has_value()) << name << " was executed";
  EXPECT_EQ(fault->kind, FaultKind::kIllegalInstruction) << name;
}

TEST(Processor, RefusesInstructionsLaterThanSse2) {
  if (!TheOptions().sse2Only) {
    GTEST_SKIP() << "this processor may be a new one; --sse2-only says that it must not be";
  }
  ExpectRefused("SSE3", [] { asm volatile("haddps %%xmm0, %%xmm0" ::: "xmm0"); });
  ExpectRefused("SSSE3", [] { asm volatile("pshufb %%xmm0, %%xmm0" ::: "xmm0"); });
  ExpectRefused("SSE4.1", [] { asm volatile("pmulld %%xmm0, %%xmm0" ::: "xmm0"); });
  ExpectRefused("SSE4.2", [] { asm volatile("pcmpgtq %%xmm0, %%xmm0" ::: "xmm0"); });
  ExpectRefused("AVX", [] { asm volatile("vpor %%xmm0, %%xmm0, %%xmm0" ::: "xmm0"); });
}

}  // namespace
}  // namespace mixdecks::proof
