// The sixteen-byte vector and the handful of idioms that the kernels are built from: SSE2 and
// nothing later. A vector of words is written [a0 … a7], lane 0 first, as it lies in memory.
#pragma once

#include <emmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(_MSC_VER)
#pragma warning(disable : 4068)  // the hints to unroll are for other compilers
#endif

namespace mixdecks::simd {

using Vector = __m128i;

inline Vector Load(const std::uint8_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const Vector*>(from));
}

inline void Store(std::uint8_t* to, Vector v) {
  _mm_storeu_si128(reinterpret_cast<Vector*>(to), v);
}

/// Eight bytes into the low half, the high half zero.
inline Vector LoadHalf(const std::uint8_t* from) {
  return _mm_loadl_epi64(reinterpret_cast<const Vector*>(from));
}

/// Four bytes into the lowest quarter, the rest zero.
inline Vector LoadQuarter(const std::uint8_t* from) {
  std::int32_t word;
  std::memcpy(&word, from, sizeof(word));
  return _mm_cvtsi32_si128(word);
}

inline void StoreQuarter(std::uint8_t* to, Vector v) {
  const std::int32_t word = _mm_cvtsi128_si32(v);
  std::memcpy(to, &word, sizeof(word));
}

inline void StoreLowHalf(std::uint8_t* to, Vector v) {
  _mm_storel_epi64(reinterpret_cast<Vector*>(to), v);
}

/// By way of `float`s, as the store of a `double` wants an aligned address.
inline void StoreHighHalf(std::uint8_t* to, Vector v) {
  _mm_storeh_pi(reinterpret_cast<__m64*>(to), _mm_castsi128_ps(v));
}

/// The first six bytes of the high half.
inline void StoreHighSixBytes(std::uint8_t* to, Vector v) {
  const Vector half = _mm_unpackhi_epi64(v, v);
  const std::int32_t four = _mm_cvtsi128_si32(half);
  const auto two = static_cast<std::uint16_t>(_mm_extract_epi16(half, 2));
  std::memcpy(to, &four, sizeof(four));
  std::memcpy(to + sizeof(four), &two, sizeof(two));
}

/// Hints that what stands `ahead` bytes on is soon read, once. That may be behind the buffer: a
/// hint never faults, but no pointer may point there, so the address is a number.
inline void PrefetchOnce(const std::uint8_t* from, std::size_t ahead) {
  const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(from) + ahead;
  _mm_prefetch(reinterpret_cast<const char*>(address), _MM_HINT_NTA);
}

inline Vector Bytes(int value) {
  return _mm_set1_epi8(static_cast<char>(value));
}

inline Vector Words(int value) {
  return _mm_set1_epi16(static_cast<std::int16_t>(value));
}

inline Vector DoubleWords(std::uint32_t value) {
  return _mm_set1_epi32(static_cast<std::int32_t>(value));
}

/// [low × 4 | high × 4]
inline Vector WordHalves(int low, int high) {
  const auto l = static_cast<std::int16_t>(low);
  const auto h = static_cast<std::int16_t>(high);
  return _mm_setr_epi16(l, l, l, l, h, h, h, h);
}

/// [even odd even odd …]
inline Vector WordPairs(int even, int odd) {
  const auto e = static_cast<std::int16_t>(even);
  const auto o = static_cast<std::int16_t>(odd);
  return _mm_setr_epi16(e, o, e, o, e, o, e, o);
}

/// [a.low | b.low]
inline Vector LowHalves(Vector a, Vector b) {
  return _mm_unpacklo_epi64(a, b);
}

/// [a.high | b.high]
inline Vector HighHalves(Vector a, Vector b) {
  return _mm_unpackhi_epi64(a, b);
}

/// [a.low | b.high]
inline Vector OuterHalves(Vector a, Vector b) {
  return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(a), _mm_castsi128_pd(b), 0b10));
}

/// [a.high | b.low]
inline Vector InnerHalves(Vector a, Vector b) {
  return _mm_castpd_si128(_mm_shuffle_pd(_mm_castsi128_pd(a), _mm_castsi128_pd(b), 0b01));
}

/// Exchanges the two bytes of every word.
inline Vector SwapWordBytes(Vector v) {
  return _mm_or_si128(_mm_slli_epi16(v, 8), _mm_srli_epi16(v, 8));
}

/// Exchanges the two words of every double word.
inline Vector SwapWords(Vector v) {
  return _mm_shufflehi_epi16(_mm_shufflelo_epi16(v, 0b10'11'00'01), 0b10'11'00'01);
}

/// Turns every double word round.
inline Vector ReverseBytes(Vector v) {
  return SwapWordBytes(SwapWords(v));
}

/// Shifts double words left, or right by a negative distance.
template <int kDistance>
Vector ShiftDoubleWords(Vector v) {
  if constexpr (kDistance == 0) {
    return v;
  } else if constexpr (kDistance > 0) {
    return _mm_slli_epi32(v, kDistance);
  } else {
    return _mm_srli_epi32(v, -kDistance);
  }
}

/// Shifts the even words left by one distance and the odd ones by another, or right by negative
/// ones. No set bit may be shifted out.
template <int kEven, int kOdd>
Vector ShiftWords(Vector v) {
  constexpr int least = kEven < kOdd ? kEven : kOdd;
  if constexpr (kEven == kOdd) {
    return kEven < 0 ? _mm_srli_epi16(v, -kEven) : _mm_slli_epi16(v, kEven);
  } else if constexpr (kEven < 0 && kOdd < 0) {
    return _mm_mulhi_epu16(v, WordPairs(1 << (16 + kEven), 1 << (16 + kOdd)));
  } else if constexpr (least < 0) {
    return ShiftWords<kEven - least, kOdd - least>(_mm_srli_epi16(v, -least));
  } else {
    return _mm_mullo_epi16(v, WordPairs(1 << kEven, 1 << kOdd));
  }
}

/// Shifts the words of the low half left by one distance and those of the high half by another.
template <int kLow, int kHigh>
Vector ShiftHalves(Vector v) {
  return _mm_mullo_epi16(v, WordHalves(1 << kLow, 1 << kHigh));
}

/// Clamps signed words to 0 … limit.
inline Vector ClampWords(Vector v, int limit) {
  return _mm_max_epi16(_mm_min_epi16(v, Words(limit)), _mm_setzero_si128());
}

/// The sums of products of neighbouring words, shifted right and narrowed: the four of `a` in the
/// low half, the four of `b` in the high half.
template <int kShift>
Vector WeighPairs(Vector a, Vector weightsA, Vector b, Vector weightsB) {
  return _mm_packs_epi32(_mm_srai_epi32(_mm_madd_epi16(a, weightsA), kShift),
                         _mm_srai_epi32(_mm_madd_epi16(b, weightsB), kShift));
}

}  // namespace mixdecks::simd
