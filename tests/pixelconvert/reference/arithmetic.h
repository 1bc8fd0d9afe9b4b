// The numbers and one-sample formulas of the reference, written as one reads them.
//
// Shifts of negative numbers floor, as the language promises since C++20.
#pragma once

#include <algorithm>
#include <array>

#include "pixelconvert/pixel_format.h"

namespace mixdecks::reference {

/// The average that rounds up.
constexpr int Average(int a, int b) {
  return (a + b + 1) >> 1;
}

/// A colour of any depth.
struct Colour {
  int r = 0, g = 0, b = 0;
  int a = 0;
};

/// A chroma pair of any depth.
struct Chroma {
  int cb = 0, cr = 0;
};

// Weights of B, G and R with 15 fraction bits.
using ForwardRow = std::array<int, 3>;
struct ForwardMatrix {
  ForwardRow y, cb, cr;
};

// The first index is the colour space.
inline constexpr ForwardMatrix kScaledForward[2] = {
    {{3211, 16515, 8421}, {14385, -9535, -4849}, {-2326, -12058, 14385}},
    {{2031, 20119, 5996}, {14385, -11108, -3309}, {-1310, -13074, 14385}},
};
inline constexpr ForwardMatrix kUnityForward[2] = {
    {{3735, 19234, 9797}, {16757, -11101, -5655}, {-2726, -14031, 16757}},
    {{2365, 23435, 6966}, {16757, -12917, -3840}, {-1536, -15220, 16757}},
};

// Weights of luma and chroma: 13 fraction bits in the blue row, 14 in the others.
struct InverseMatrix {
  int blueY, blueCb;
  int greenRedY;
  int greenCb, greenCr;
  int redCr;
};

inline constexpr InverseMatrix kScaledInverse[2] = {
    {9535, 16523, 19070, -6422, -13320, 26148},
    {9535, 17301, 19070, -3489, -8732, 29376},
};
inline constexpr InverseMatrix kUnityInverse[2] = {
    {8192, 14192, 16384, -5513, -11439, 22459},
    {8192, 14861, 16384, -3001, -7498, 25226},
};

constexpr int HighestSample(int bits) {
  return (1 << bits) - 1;
}

/// The two products of blue and green are floored together, that of red alone.
constexpr int Forward(const ForwardRow& row, const Colour& c, int shift, int offset, int highest) {
  const int first = (c.b * row[0] + c.g * row[1]) >> shift;
  const int second = (c.r * row[2]) >> shift;
  return std::clamp(first + second + offset, 0, highest);
}

/// One pixel of YUV, with the offsets already taken off, to RGB. Which products are floored
/// together depends on the pixel's place in its pair.
constexpr Colour Inverse(const InverseMatrix& m, bool oddPixel, int y, Chroma c, int shiftBlue,
                         int shiftGreenRed, int highest) {
  const int s = shiftGreenRed;
  int r = 0, g = 0, b = 0;
  if (oddPixel) {
    b = ((c.cb * m.blueCb) >> shiftBlue) + ((y * m.blueY) >> shiftBlue);
    g = ((c.cb * m.greenCb) >> s) + ((c.cr * m.greenCr + y * m.greenRedY) >> s);
    r = (c.cr * m.redCr + y * m.greenRedY) >> s;
  } else {
    b = (c.cb * m.blueCb + y * m.blueY) >> shiftBlue;
    g = ((c.cb * m.greenCb + y * m.greenRedY) >> s) + ((c.cr * m.greenCr) >> s);
    r = ((y * m.greenRedY) >> s) + ((c.cr * m.redCr) >> s);
  }
  return {std::clamp(r, 0, highest), std::clamp(g, 0, highest), std::clamp(b, 0, highest), 0};
}

// Sample rules among the RGB formats of 8 and 10 bits.

constexpr int High16(unsigned product) {
  return static_cast<int>(product >> 16);
}

constexpr int FullToVideo10(int v) {
  return std::min(64 + High16(static_cast<unsigned>(v) * 56284u), 1023);
}

constexpr int VideoToFull10(int v) {
  const unsigned d = static_cast<unsigned>(std::max(v - 64, 0));
  return std::min(High16(2 * d * 38155u), 1023);
}

constexpr int WidenFull(int v8) {
  return v8 << 2;
}

constexpr int WidenVideo(int v8) {
  return FullToVideo10(v8 << 2);
}

constexpr int NarrowFull(int v10) {
  return v10 >> 2;
}

constexpr int NarrowVideo(int v10) {
  const unsigned d = static_cast<unsigned>(std::max(v10 - 64, 0));
  return std::min(High16(2 * d * 38155u) >> 2, 255);
}

/// Alpha of 8 bits to the video-range alpha of `ay10` and back; the two are no inverses.
constexpr int WidenAlpha(int a8) {
  return std::min(High16(static_cast<unsigned>(a8 << 2) * 56284u) + 64, 1023);
}

constexpr int NarrowAlpha(int a10) {
  const unsigned d = static_cast<unsigned>(std::max(a10 - 64, 0)) << 1;
  return std::min(High16(d * 38155u) >> 2, 255);
}

}  // namespace mixdecks::reference
