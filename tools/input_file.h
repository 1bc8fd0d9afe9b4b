// Reads a whole input file, or the standard input.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mixdecks {

/// Stands for the standard input where a file is wanted.
inline constexpr const char* kStandardInput = "-";

/// All bytes of the file `path`, in UTF-8. Throws `UserError`.
std::vector<std::uint8_t> ReadInputFile(const std::string& path);

}  // namespace mixdecks
