// The colour matrices: the one home of their numbers.
//
// RGB becomes YUV through a forward matrix and YUV becomes RGB through an inverse one. Full-range
// RGB takes the scaled sets, video-range RGB the unity sets, in which luma keeps its level. The
// stored weights never change with the depth of the samples; the shift behind the products does.
#pragma once

#include <cstdint>

#include "pixelconvert/pixel_format.h"

namespace mixdecks {

struct ForwardRow {
  std::int16_t blue;
  std::int16_t green;
  std::int16_t red;
};

struct ForwardMatrix {
  ForwardRow y;
  ForwardRow cb;
  ForwardRow cr;
};

/// Fraction bits of the forward weights.
inline constexpr int kForwardFraction = 15;

struct InverseMatrix {
  std::int16_t blueFromCb;  ///< 13 fraction bits: 2.1 has no room for more
  std::int16_t greenFromCb;
  std::int16_t greenFromCr;
  std::int16_t redFromCr;
  std::int16_t luma;  ///< of green and red; blue's, with 13 fraction bits, is half of it

  constexpr int BlueFromLuma() const { return luma / 2; }
};

/// Fraction bits of the inverse weights for green and red, and for blue.
inline constexpr int kInverseFraction = 14;
inline constexpr int kInverseBlueFraction = 13;

// Indexed by range, then by colour space. Weights in the order blue, green, red.
static_assert(static_cast<int>(SampleRange::kFull) == 0 &&
              static_cast<int>(SampleRange::kVideo) == 1 && kRec601 == 0 && kRec709 == 1);
inline constexpr ForwardMatrix kForwardMatrices[2][2] = {
    {
        {{3211, 16515, 8421}, {14385, -9535, -4849}, {-2326, -12058, 14385}},
        {{2031, 20119, 5996}, {14385, -11108, -3309}, {-1310, -13074, 14385}},
    },
    {
        {{3735, 19234, 9797}, {16757, -11101, -5655}, {-2726, -14031, 16757}},
        {{2365, 23435, 6966}, {16757, -12917, -3840}, {-1536, -15220, 16757}},
    },
};

inline constexpr InverseMatrix kInverseMatrices[2][2] = {
    {
        {16523, -6422, -13320, 26148, 19070},
        {17301, -3489, -8732, 29376, 19070},
    },
    {
        {14192, -5513, -11439, 22459, 16384},
        {14861, -3001, -7498, 25226, 16384},
    },
};

/// The decimals themselves, for 12-bit RGB. What lowers a sample is subtracted.
struct DecimalMatrix {
  float yFromRed, yFromGreen, yFromBlue;
  float cbFromBlue, cbFromRed, cbFromGreen;
  float crFromRed, crFromGreen, crFromBlue;
};

inline constexpr DecimalMatrix kDecimalMatrices[2] = {
    {0.257f, 0.504f, 0.098f, 0.439f, 0.148f, 0.291f, 0.439f, 0.368f, 0.071f},
    {0.183f, 0.614f, 0.062f, 0.439f, 0.101f, 0.339f, 0.439f, 0.399f, 0.04f},
};

inline constexpr float kDecimalBlack = 0.0625f;
inline constexpr float kDecimalGrey = 0.5f;

/// Whether all samples made of channels from 0 to 1 stay that far inside 0 to 1.
constexpr bool StaysInside(const DecimalMatrix& m, float margin) {
  const auto inside = [&](float offset, float up, float down) {
    return offset - down > margin && offset + up < 1.0f - margin;
  };
  return inside(kDecimalBlack, m.yFromRed + m.yFromGreen + m.yFromBlue, 0.0f) &&
         inside(kDecimalGrey, m.cbFromBlue, m.cbFromRed + m.cbFromGreen) &&
         inside(kDecimalGrey, m.crFromRed, m.crFromGreen + m.crFromBlue);
}

template <SampleRange kRange, ColourSpaceIndex kSpace>
inline constexpr ForwardMatrix kForwardMatrix = kForwardMatrices[static_cast<int>(kRange)][kSpace];

template <SampleRange kRange, ColourSpaceIndex kSpace>
inline constexpr InverseMatrix kInverseMatrix = kInverseMatrices[static_cast<int>(kRange)][kSpace];

/// The level of black beside RGB of a range: video-range RGB stands at the right level already.
constexpr int LumaOffset(SampleRange range, int depth) {
  return range == SampleRange::kFull ? 16 << (depth - 8) : 0;
}

/// The level of no colour.
constexpr int ChromaOffset(int depth) {
  return 128 << (depth - 8);
}

/// Whether a row can make a sample outside 0 … 2^toDepth - 1 of channels of `fromDepth` bits.
constexpr bool CanLeaveSpan(const ForwardRow& row, int offset, int fromDepth, int toDepth) {
  const int white = (1 << fromDepth) - 1;
  const int shift = kForwardFraction + fromDepth - toDepth;
  const auto extreme = [&](auto better) {
    const int pair = better(row.blue * white, 0) + better(row.green * white, 0);
    return (pair >> shift) + (better(row.red * white, 0) >> shift) + offset;
  };
  const int least = extreme([](int a, int b) { return a < b ? a : b; });
  const int greatest = extreme([](int a, int b) { return a > b ? a : b; });
  return least < 0 || greatest >= 1 << toDepth;
}

constexpr bool CanLeaveSpan(const ForwardMatrix& matrix, int lumaOffset, int fromDepth,
                            int toDepth) {
  return CanLeaveSpan(matrix.y, lumaOffset, fromDepth, toDepth) ||
         CanLeaveSpan(matrix.cb, ChromaOffset(toDepth), fromDepth, toDepth) ||
         CanLeaveSpan(matrix.cr, ChromaOffset(toDepth), fromDepth, toDepth);
}

}  // namespace mixdecks
