#include "simulator/file_reading.h"

#include <fstream>
#include <system_error>

namespace mixdecks::simulator {
namespace {

using std::filesystem::filesystem_error;
using std::filesystem::path;

template <class Bytes>
Bytes Read(const path& file, std::uint64_t most) {
  const auto fail = [&file](std::errc error) {
    throw filesystem_error("cannot be read", file, std::make_error_code(error));
  };
  if (std::filesystem::is_directory(file)) fail(std::errc::is_a_directory);
  const std::uint64_t size = std::filesystem::file_size(file);
  if (size > most) fail(std::errc::file_too_large);
  std::ifstream stream(file, std::ios::binary);
  if (!stream) fail(std::errc::permission_denied);
  Bytes bytes(static_cast<std::size_t>(size), {});
  stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  if (static_cast<std::uint64_t>(stream.gcount()) != size) fail(std::errc::io_error);
  return bytes;
}

}  // namespace

std::vector<std::uint8_t> ReadFile(const path& file, std::uint64_t most) {
  return Read<std::vector<std::uint8_t>>(file, most);
}

std::string ReadTextFile(const path& file, std::uint64_t most) {
  return Read<std::string>(file, most);
}

std::string Reason(const filesystem_error& error) {
  return error.code().message();
}

}  // namespace mixdecks::simulator
