// Standard input: a 1920 x 1080 picture, bytes B G R A. Standard output: the switcher's frame.
#include <cstdint>
#include <iostream>
#include <vector>

std::vector<std::uint8_t> ToSwitcherFrame(const std::vector<std::uint8_t>& bgra);

int main() {
  std::vector<std::uint8_t> bgra(std::size_t{1920} * 1080 * 4);
  if (!std::cin.read(reinterpret_cast<char*>(bgra.data()),
                     static_cast<std::streamsize>(bgra.size()))) {
    std::cerr << "convert_stream: the picture is shorter than 1920 x 1080 x 4 bytes\n";
    return 1;
  }
  const std::vector<std::uint8_t> frame = ToSwitcherFrame(bgra);
  std::cout.write(reinterpret_cast<const char*>(frame.data()),
                  static_cast<std::streamsize>(frame.size()));
  return std::cout.flush() ? 0 : 1;
}
