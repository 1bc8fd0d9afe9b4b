// One inspector per file format: whether the bytes are of that format, and what they declare.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

#include "tools/picture/picture_header.h"

namespace mixdecks {

inline bool StartsWith(std::span<const std::uint8_t> file, std::string_view signature) noexcept {
  return file.size() >= signature.size() &&
         std::equal(signature.begin(), signature.end(), file.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

// Each reads a file of its own format, whose signature was seen. Sides are given as declared, of
// any size. All throw `PictureError`.
PictureHeader InspectPng(std::span<const std::uint8_t> file);
PictureHeader InspectJpeg(std::span<const std::uint8_t> file);
PictureHeader InspectPsd(std::span<const std::uint8_t> file);
PictureHeader InspectBmp(std::span<const std::uint8_t> file);
PictureHeader InspectPnm(std::span<const std::uint8_t> file);

}  // namespace mixdecks
