// The one writer of a pool folder.
//
// Whatever happens to the process at whatever moment, the folder holds a whole pool: the one
// before a change or the one after it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "simulator/file_operations.h"
#include "simulator/folder_lock.h"
#include "simulator/still_store.h"

namespace mixdecks::simulator {

class PoolStore final : public StillStore {
 public:
  /// Opens the pool in `folder`, or makes one in a folder that is empty or not there. Finishes
  /// what an ended process began. Throws `PoolError` when the folder cannot be used, is in use,
  /// holds other things, or a damaged pool; in the last three cases it is left as it was.
  PoolStore(std::filesystem::path folder, const PoolShape& shape,
            FileOperations& files = SystemFileOperations());

  const PoolContents& Contents() const noexcept override { return contents_; }
  std::vector<std::uint8_t> Frame(std::uint32_t slot) const override;
  void StoreStill(std::uint32_t slot, const Still& still,
                  std::span<const std::uint8_t> frame) override;
  void ClearStill(std::uint32_t slot) override;
  void Change(const std::function<void(PoolContents&)>& change) override;
  void Close() noexcept override { lock_.reset(); }

 private:
  class Staging;

  void PrepareFolder() const;
  void OpenExisting(const PoolShape& shape);
  bool Settle(std::uint32_t slot);
  void RenderPicture(std::uint32_t slot);
  void ForgetStaged(const std::filesystem::path& file) noexcept;

  std::filesystem::path folder_;
  FileOperations& files_;
  std::unique_ptr<FolderLock> lock_;
  PoolContents contents_;
};

}  // namespace mixdecks::simulator
