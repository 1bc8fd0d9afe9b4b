#include "simulator/png_file.h"

// The library is compiled into this file alone, so that other parts of a program may have theirs.
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

#include <cstdlib>
#include <memory>
#include <new>

namespace mixdecks::simulator {

std::vector<std::uint8_t> EncodePng(std::span<const std::uint8_t> pixels, std::uint32_t width,
                                    std::uint32_t height) {
  constexpr int kComponents = 4;
  int length = 0;
  const std::unique_ptr<unsigned char, decltype(&std::free)> file(
      stbi_write_png_to_mem(pixels.data(), static_cast<int>(width) * kComponents,
                            static_cast<int>(width), static_cast<int>(height), kComponents,
                            &length),
      &std::free);
  if (file == nullptr) throw std::bad_alloc();
  return {file.get(), file.get() + length};
}

}  // namespace mixdecks::simulator
