#include "tools/picture/stb_decoder.h"

#include <limits>
#include <memory>

#include "tools/picture/picture_error.h"

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_ONLY_BMP
#define STBI_NO_STDIO
#define STBI_FAILURE_USERMSG
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#endif
#include <stb/stb_image.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

namespace mixdecks {
namespace {

constexpr int kLanes = 4;

struct FreeImage {
  void operator()(void* pixels) const { stbi_image_free(pixels); }
};

template <typename Sample>
using Pixels = std::unique_ptr<Sample[], FreeImage>;

struct Decoded {
  int width = 0;
  int height = 0;
  int lanesInFile = 0;

  bool HasAlpha() const { return lanesInFile == 2 || lanesInFile == 4; }
  std::size_t Samples() const {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kLanes;
  }
};

[[noreturn]] void Refuse() {
  const char* reason = stbi_failure_reason();
  throw DamagedPicture(reason != nullptr ? reason : "it cannot be decoded");
}

}  // namespace

HostDocument DecodeWithStb(std::span<const std::uint8_t> file, const PictureHeader& header) {
  if (file.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    throw PictureError("the file is larger than 2 GB", "save the picture in a smaller file");
  }
  const auto bytes = static_cast<int>(file.size());
  Decoded decoded;
  if (header.depth == 16) {
    const Pixels<stbi_us> pixels(stbi_load_16_from_memory(
        file.data(), bytes, &decoded.width, &decoded.height, &decoded.lanesInFile, kLanes));
    if (!pixels) Refuse();
    return DocumentOfRgba16({pixels.get(), decoded.Samples()}, decoded.width, decoded.height,
                            decoded.HasAlpha());
  }
  const Pixels<stbi_uc> pixels(stbi_load_from_memory(
      file.data(), bytes, &decoded.width, &decoded.height, &decoded.lanesInFile, kLanes));
  if (!pixels) Refuse();
  return DocumentOfRgba8({pixels.get(), decoded.Samples()}, decoded.width, decoded.height,
                         decoded.HasAlpha());
}

}  // namespace mixdecks
