// What stands between the layouts and the arithmetic where 4:2:2 becomes RGB.
#pragma once

#include "pixelconvert/simd.h"

namespace mixdecks {

/// Two neighbouring pixels of each of four runs, raw samples in words.
struct YuvSite {
  simd::Vector chroma;  ///< [Cb × 4 | Cr × 4]
  simd::Vector luma;    ///< [even × 4 | odd × 4]
  simd::Vector alpha;   ///< [even × 4 | odd × 4], times 64; of `ay10` alone
};

struct ChromaPair {
  int cb;
  int cr;
};

/// Signed words of two neighbouring pixels of each run, [even × 4 | odd × 4], not yet clamped.
struct RgbSite {
  simd::Vector blue;
  simd::Vector green;
  simd::Vector red;
  simd::Vector alpha;  ///< as it stood in the YUV site
};

}  // namespace mixdecks
