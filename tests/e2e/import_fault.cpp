#include "tests/e2e/import_fault.h"

#include <gtest/gtest.h>

#include <cstring>

namespace mixdecks::e2e {
namespace {

/// A loaded library, whose addresses count from where it was loaded.
class Image {
 public:
  explicit Image(HMODULE library) : base_(reinterpret_cast<std::uint8_t*>(library)) {}

  template <class Record>
  Record* At(std::size_t address) const {
    return reinterpret_cast<Record*>(base_ + address);
  }
  /// Where the address of an imported function stands; null without such an import.
  void** FindImport(const char* function) const {
    const auto* headers =
        At<IMAGE_NT_HEADERS64>(static_cast<std::size_t>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    const IMAGE_DATA_DIRECTORY& imports =
        headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* each = At<IMAGE_IMPORT_DESCRIPTOR>(imports.VirtualAddress); each->Name != 0;
         ++each) {
      if (void** slot = FindIn(*each, function)) return slot;
    }
    return nullptr;
  }

 private:
  void** FindIn(const IMAGE_IMPORT_DESCRIPTOR& imported, const char* function) const {
    const auto* name = At<IMAGE_THUNK_DATA64>(imported.OriginalFirstThunk);
    auto* slot = At<void*>(imported.FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL64(name->u1.Ordinal)) continue;
      const auto* byName = At<IMAGE_IMPORT_BY_NAME>(name->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(byName->Name), function) == 0) return slot;
    }
    return nullptr;
  }

  std::uint8_t* base_;
};

void Store(void** slot, void* function) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = function;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace

ImportFault::ImportFault(HMODULE library, const char* function, void* substitute)
    : slot_(Image(library).FindImport(function)) {
  EXPECT_NE(slot_, nullptr) << function << " is not imported";
  if (slot_ == nullptr) return;
  original_ = *slot_;
  Store(slot_, substitute);
}

ImportFault::~ImportFault() {
  if (slot_ != nullptr) Store(slot_, original_);
}

}  // namespace mixdecks::e2e
