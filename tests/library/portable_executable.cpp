#include "tests/library/portable_executable.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace mixdecks::testing {
namespace {

constexpr std::size_t kExportDirectory = 0;
constexpr std::size_t kImportDirectory = 1;
constexpr std::size_t kResourceDirectory = 2;
constexpr std::uint16_t kLibraryFlag = 0x2000;
constexpr std::uint16_t kRelocationsStripped = 0x0001;
constexpr std::uint16_t kOptionalHeader64 = 0x020B;
constexpr std::uint32_t kHighBit = 0x80000000;

[[noreturn]] void Fail(const char* what) {
  throw std::runtime_error(what);
}

}  // namespace

PortableExecutable::PortableExecutable(const std::string& path) {
  std::ifstream input(path, std::ios::binary);
  if (!input) Fail("the library file cannot be opened");
  file_.assign(std::istreambuf_iterator<char>(input), {});

  const std::size_t signature = At<std::uint32_t>(0x3C);
  if (At<std::uint32_t>(signature) != 0x00004550) Fail("not a portable executable");
  const std::size_t header = signature + 4;
  machine_ = At<std::uint16_t>(header);
  timeStamp_ = At<std::uint32_t>(header + 4);
  const auto flags = At<std::uint16_t>(header + 18);
  isLibrary_ = (flags & kLibraryFlag) != 0;
  hasRelocations_ = (flags & kRelocationsStripped) == 0;

  const std::size_t optional = header + 20;
  if (At<std::uint16_t>(optional) != kOptionalHeader64) Fail("not a 64-bit executable");
  dllCharacteristics_ = At<std::uint16_t>(optional + 70);
  const auto directoryCount = At<std::uint32_t>(optional + 108);
  for (std::uint32_t i = 0; i < directoryCount; ++i) {
    const std::size_t entry = optional + 112 + 8 * std::size_t{i};
    directories_.push_back({At<std::uint32_t>(entry), At<std::uint32_t>(entry + 4)});
  }

  const std::size_t sections = optional + At<std::uint16_t>(header + 16);
  for (std::uint16_t i = 0; i < At<std::uint16_t>(header + 2); ++i) {
    const std::size_t entry = sections + 40 * std::size_t{i};
    sections_.push_back({At<std::uint32_t>(entry + 12), At<std::uint32_t>(entry + 8),
                         At<std::uint32_t>(entry + 20), At<std::uint32_t>(entry + 16)});
  }
}

template <class Number>
Number PortableExecutable::At(std::size_t offset) const {
  if (offset > file_.size() || file_.size() - offset < sizeof(Number)) Fail("points outside");
  Number number;
  std::memcpy(&number, file_.data() + offset, sizeof number);
  return number;
}

std::size_t PortableExecutable::OffsetOf(std::uint32_t address) const {
  for (const Section& section : sections_) {
    if (address < section.address || address - section.address >= section.size) continue;
    return std::size_t{section.fileOffset} + (address - section.address);
  }
  Fail("an address outside all sections");
}

std::string PortableExecutable::TextAt(std::uint32_t address) const {
  std::string text;
  for (std::size_t offset = OffsetOf(address); At<char>(offset) != '\0'; ++offset) {
    text += At<char>(offset);
  }
  return text;
}

std::string PortableExecutable::ExportedModuleName() const {
  return TextAt(At<std::uint32_t>(OffsetOf(DirectoryAt(kExportDirectory).address) + 12));
}

std::uint32_t PortableExecutable::ExportTimeStamp() const {
  return At<std::uint32_t>(OffsetOf(DirectoryAt(kExportDirectory).address) + 4);
}

std::vector<std::string> PortableExecutable::ExportedNames() const {
  const std::size_t table = OffsetOf(DirectoryAt(kExportDirectory).address);
  if (At<std::uint32_t>(table + 20) != At<std::uint32_t>(table + 24)) Fail("a nameless export");
  std::vector<std::string> names;
  const std::size_t addresses = OffsetOf(At<std::uint32_t>(table + 32));
  for (std::uint32_t i = 0; i < At<std::uint32_t>(table + 24); ++i) {
    names.push_back(TextAt(At<std::uint32_t>(addresses + 4 * std::size_t{i})));
  }
  return names;
}

std::vector<std::string> PortableExecutable::ImportedLibraries() const {
  std::vector<std::string> libraries;
  std::size_t entry = OffsetOf(DirectoryAt(kImportDirectory).address);
  for (; At<std::uint32_t>(entry + 12) != 0; entry += 20) {
    libraries.push_back(TextAt(At<std::uint32_t>(entry + 12)));
  }
  return libraries;
}

std::map<ResourceKey, std::vector<std::uint8_t>> PortableExecutable::Resources() const {
  ResourceMap found;
  const Directory& directory = DirectoryAt(kResourceDirectory);
  if (directory.size != 0) ReadResourceLevel(OffsetOf(directory.address), 0, 0, {}, found);
  return found;
}

void PortableExecutable::ReadResourceLevel(std::size_t root, std::uint32_t offset, int level,
                                           ResourceKey key, ResourceMap& found) const {
  if (level > 2) Fail("resources nested too deep");
  const std::size_t table = root + offset;
  const std::size_t count =
      std::size_t{At<std::uint16_t>(table + 12)} + At<std::uint16_t>(table + 14);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = table + 16 + 8 * i;
    const auto name = At<std::uint32_t>(entry);
    const auto target = At<std::uint32_t>(entry + 4);
    if (level == 0) key.type = ResourceName(root, name);
    if (level == 1) key.name = ResourceName(root, name);
    if (level == 2) key.language = name;
    if ((target & kHighBit) != 0) {
      ReadResourceLevel(root, target & ~kHighBit, level + 1, key, found);
      continue;
    }
    const std::size_t begin = OffsetOf(At<std::uint32_t>(root + target));
    const auto size = At<std::uint32_t>(root + target + 4);
    if (begin > file_.size() || file_.size() - begin < size) Fail("a resource outside the file");
    found[key].assign(file_.data() + begin, file_.data() + begin + size);
  }
}

std::string PortableExecutable::ResourceName(std::size_t root, std::uint32_t name) const {
  if ((name & kHighBit) == 0) return std::to_string(name);
  const std::size_t text = root + (name & ~kHighBit);
  std::string ascii;
  for (std::size_t i = 0; i < At<std::uint16_t>(text); ++i) {
    ascii += static_cast<char>(At<std::uint16_t>(text + 2 + 2 * i));
  }
  return ascii;
}

std::uint16_t BlockReader::Word() {
  if (block_.size() < 2 || position_ > block_.size() - 2) Fail("a block ends early");
  const auto word = static_cast<std::uint16_t>(block_[position_] | block_[position_ + 1] << 8);
  position_ += 2;
  return word;
}

std::uint32_t BlockReader::Long() {
  const std::uint32_t low = Word();
  return low | static_cast<std::uint32_t>(Word()) << 16;
}

std::string BlockReader::Bytes(std::size_t count) {
  if (block_.size() - position_ < count) Fail("a block ends early");
  const std::string bytes(reinterpret_cast<const char*>(block_.data()) + position_, count);
  position_ += count;
  return bytes;
}

std::string BlockReader::WideText() {
  std::string text;
  while (const std::uint16_t unit = Word())
    text += static_cast<char>(unit);
  return text;
}

}  // namespace mixdecks::testing
