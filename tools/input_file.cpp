#include "tools/input_file.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tools/interrupt.h"
#include "tools/path_text.h"
#include "tools/user_error.h"

namespace mixdecks {
namespace {

std::vector<std::uint8_t> ReadAll(std::istream& stream, const std::string& path) {
  constexpr std::size_t kPiece = 1 << 20;
  std::vector<std::uint8_t> bytes;
  while (stream) {
    const std::size_t filled = bytes.size();
    bytes.resize(filled + kPiece);
    stream.read(reinterpret_cast<char*>(bytes.data() + filled), kPiece);
    bytes.resize(filled + static_cast<std::size_t>(stream.gcount()));
  }
  if (stream.bad()) throw Failure(path, "reading it failed", "check the disk, or copy the file");
  return bytes;
}

}  // namespace

std::vector<std::uint8_t> ReadInputFile(const std::string& path) {
  if (path == kStandardInput) {
    const InterruptEndsProcess ends;
    return ReadAll(std::cin, "standard input");
  }
  const std::filesystem::path file = PathOf(path);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) {
    throw Failure(path, "it is a folder", "give the path of a file");
  }
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw Failure(path, errno != 0 ? std::strerror(errno) : "it cannot be opened",
                  "check the path and the permissions");
  }
  return ReadAll(stream, path);
}

}  // namespace mixdecks
