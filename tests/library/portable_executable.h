// Reads what a Windows library file says about itself: headers, exports, imports, resources.
//
// Throws `std::runtime_error` when the file is not such a library or points outside itself.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace mixdecks::testing {

/// Type and name of a resource: numbers as decimal text, names as they are.
struct ResourceKey {
  std::string type;
  std::string name;
  std::uint32_t language;
  auto operator<=>(const ResourceKey&) const = default;
};

class PortableExecutable {
 public:
  explicit PortableExecutable(const std::string& path);

  const std::vector<std::uint8_t>& File() const noexcept { return file_; }
  std::uint16_t Machine() const noexcept { return machine_; }
  std::uint32_t TimeStamp() const noexcept { return timeStamp_; }
  std::uint16_t DllCharacteristics() const noexcept { return dllCharacteristics_; }
  bool IsLibrary() const noexcept { return isLibrary_; }
  bool HasRelocations() const noexcept { return hasRelocations_; }

  std::string ExportedModuleName() const;
  std::uint32_t ExportTimeStamp() const;
  std::vector<std::string> ExportedNames() const;
  std::vector<std::string> ImportedLibraries() const;
  /// Whether it names libraries that are loaded only when they are first called.
  bool ImportsLater() const { return DirectoryAt(kDelayedImportDirectory).size != 0; }
  std::map<ResourceKey, std::vector<std::uint8_t>> Resources() const;

 private:
  struct Section {
    std::uint32_t address, size, fileOffset, fileSize;
  };
  struct Directory {
    std::uint32_t address, size;
  };
  static constexpr std::size_t kDelayedImportDirectory = 13;

  using ResourceMap = std::map<ResourceKey, std::vector<std::uint8_t>>;

  template <class Number>
  Number At(std::size_t offset) const;
  std::size_t OffsetOf(std::uint32_t address) const;
  std::string TextAt(std::uint32_t address) const;
  const Directory& DirectoryAt(std::size_t index) const { return directories_.at(index); }
  void ReadResourceLevel(std::size_t root, std::uint32_t offset, int level, ResourceKey key,
                         ResourceMap& found) const;
  std::string ResourceName(std::size_t root, std::uint32_t name) const;

  std::vector<std::uint8_t> file_;
  std::uint16_t machine_ = 0;
  std::uint32_t timeStamp_ = 0;
  std::uint16_t dllCharacteristics_ = 0;
  bool isLibrary_ = false;
  bool hasRelocations_ = false;
  std::vector<Section> sections_;
  std::vector<Directory> directories_;
};

/// Takes little-endian numbers and text off the front of a block. Throws at its end.
class BlockReader {
 public:
  explicit BlockReader(std::vector<std::uint8_t> block) : block_(std::move(block)) {}

  std::uint16_t Word();
  std::uint32_t Long();
  /// So many bytes as text.
  std::string Bytes(std::size_t count);
  /// Zero-terminated UTF-16, its characters being ASCII.
  std::string WideText();
  /// Skips to the next multiple of four from the block's start.
  void Align() { position_ = (position_ + 3) & ~std::size_t{3}; }
  std::size_t Position() const noexcept { return position_; }
  bool AtEnd() const noexcept { return position_ >= block_.size(); }

 private:
  std::vector<std::uint8_t> block_;
  std::size_t position_ = 0;
};

}  // namespace mixdecks::testing
