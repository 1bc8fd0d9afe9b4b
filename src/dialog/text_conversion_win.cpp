#include <windows.h>

#include "dialog/text_conversion.h"

namespace mixdecks {

std::u16string WideText(const char* narrow) {
  const int units = MultiByteToWideChar(CP_THREAD_ACP, 0, narrow, -1, nullptr, 0);
  if (units <= 1) return {};
  std::u16string wide(static_cast<std::size_t>(units - 1), u'\0');
  MultiByteToWideChar(CP_THREAD_ACP, 0, narrow, -1, reinterpret_cast<wchar_t*>(wide.data()), units);
  return wide;
}

std::string NarrowText(const char16_t* wide) {
  if (wide == nullptr) return {};
  const auto* units = reinterpret_cast<const wchar_t*>(wide);
  const int bytes = WideCharToMultiByte(CP_THREAD_ACP, 0, units, -1, nullptr, 0, nullptr, nullptr);
  if (bytes <= 1) return {};
  std::string narrow(static_cast<std::size_t>(bytes - 1), '\0');
  WideCharToMultiByte(CP_THREAD_ACP, 0, units, -1, narrow.data(), bytes, nullptr, nullptr);
  return narrow;
}

}  // namespace mixdecks
