// Text between the service's UTF-16 and the files' UTF-8.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace mixdecks::simulator {

/// UTF-16 to UTF-8. A surrogate without its partner becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);

/// UTF-8 to UTF-16. Bytes that are no UTF-8 become U+FFFD, one for each.
std::u16string ToUtf16(std::string_view text);

/// A path as text for messages, in UTF-8.
std::string PathText(const std::filesystem::path& path);

}  // namespace mixdecks::simulator
