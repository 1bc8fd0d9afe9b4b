#include "tools/plugin_host/screen_picture.h"

#include <fstream>
#include <stdexcept>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wunused-function"
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>
#pragma GCC diagnostic pop

namespace mixdecks {
namespace {

/// A picture has settled when it stays the same for so many looks; one that never does is taken as
/// it is in the end.
constexpr int kSameLooks = 20;
constexpr int kMostLooks = 5000;
constexpr DWORD kLookMilliseconds = 2;

void AppendToFile(void* file, void* data, int size) {
  static_cast<std::ofstream*>(file)->write(static_cast<const char*>(data), size);
}

BITMAPINFO TopDownFormat(int width, int height) {
  BITMAPINFO format{};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -height;
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  return format;
}

}  // namespace

ScreenPicture TakeScreenPicture(const RECT& rectangle) {
  ScreenPicture picture{rectangle.right - rectangle.left, rectangle.bottom - rectangle.top, {}};
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const BITMAPINFO format = TopDownFormat(picture.width, picture.height);
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(screen, &format, DIB_RGB_COLORS, &pixels, nullptr, 0);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, picture.width, picture.height, screen, rectangle.left, rectangle.top,
         SRCCOPY);
  GdiFlush();
  const auto* bgrx = static_cast<const std::uint8_t*>(pixels);
  const auto count =
      static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
  for (std::size_t i = 0; i < count; ++i) {
    for (const int lane : {2, 1, 0})
      picture.rgb.push_back(bgrx[4 * i + static_cast<std::size_t>(lane)]);
  }
  SelectObject(memory, former);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

ScreenPicture TakeSettledPicture(const std::vector<HWND>& windows) {
  RECT all{};
  for (const HWND window : windows) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
    RECT each{};
    GetWindowRect(window, &each);
    UnionRect(&all, &all, &each);
  }
  ScreenPicture picture = TakeScreenPicture(all);
  int same = 0;
  for (int look = 0; look < kMostLooks && same < kSameLooks; ++look) {
    Sleep(kLookMilliseconds);
    ScreenPicture next = TakeScreenPicture(all);
    same = next == picture ? same + 1 : 0;
    picture = std::move(next);
  }
  return picture;
}

void WritePng(const std::filesystem::path& file, const ScreenPicture& picture) {
  std::ofstream output(file, std::ios::binary);
  const int written = stbi_write_png_to_func(AppendToFile, &output, picture.width, picture.height,
                                             3, picture.rgb.data(), picture.width * 3);
  if (written == 0 || !output.flush()) throw std::runtime_error("cannot write " + file.string());
}

}  // namespace mixdecks
