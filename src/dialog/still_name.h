// The still name that the dialog proposes: the document's file name without path and extension.
#pragma once

#include <cstdint>

namespace mixdecks {

/// Finds the last path component of a Pascal string (length byte, then up to 255 characters) up to
/// its first dot, terminates it in place and returns its first character. At most 254 characters
/// are looked at, so that the terminator stays inside the 256 bytes.
const char* CutStillName(std::uint8_t (&fileName)[256]) noexcept;

}  // namespace mixdecks
