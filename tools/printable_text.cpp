#include "tools/printable_text.h"

#include <fmt/format.h>

namespace mixdecks {
namespace {

constexpr unsigned char kDelete = 0x7F;
/// Control characters beyond ASCII are this byte and one from 0x80 to 0x9F.
constexpr unsigned char kLeadOfControls = 0xC2;

std::string Written(unsigned char control) {
  if (control == '\n') return "\\n";
  if (control == '\t') return "\\t";
  return fmt::format("\\x{:02X}", control);
}

}  // namespace

std::string PrintableText(const std::string& text) {
  std::string printable;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
    if (byte < ' ' || byte == kDelete) {
      printable += Written(byte);
    } else if (byte == kLeadOfControls && next >= 0x80 && next < 0xA0) {
      printable += Written(next);
      ++i;
    } else {
      printable += text[i];
    }
  }
  return printable;
}

}  // namespace mixdecks
