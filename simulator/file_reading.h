// Whole files into memory.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace mixdecks::simulator {

/// Reads a file of at most `most` bytes. Throws `std::filesystem::filesystem_error` when it cannot
/// be read or is larger.
std::vector<std::uint8_t> ReadFile(const std::filesystem::path& file, std::uint64_t most);

/// The same as text.
std::string ReadTextFile(const std::filesystem::path& file, std::uint64_t most);

/// The system's words for what went wrong with a file, without its name.
std::string Reason(const std::filesystem::filesystem_error& error);

}  // namespace mixdecks::simulator
