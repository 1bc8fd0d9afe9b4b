// To be included before anything else by a unit that computes in single precision.
//
// A compiler that may use fused multiply-adds joins a product and a sum to one step with one
// rounding. Results would then depend on the processor that was compiled for; so it is told not to.
// GCC has to be told. Clang joins within an expression only, which vector steps never are, and
// others not without being asked to.
#pragma once

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC optimize("fp-contract=off")
#endif
