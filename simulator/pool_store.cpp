#include "simulator/pool_store.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "simulator/contact_sheet.h"
#include "simulator/file_reading.h"
#include "simulator/frame_picture.h"
#include "simulator/pool_document.h"
#include "simulator/pool_files.h"
#include "simulator/unicode.h"

namespace mixdecks::simulator {
namespace {

using std::filesystem::filesystem_error;
using std::filesystem::path;

constexpr char kSheetName[] = "index.html";
constexpr char kLockName[] = "pool.lock";

std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Whether a pool may be made in a folder: it is empty but for what an ended attempt left.
bool IsVacant(const path& folder) {
  const path leftovers[] = {kLockName, StagedFile(kSheetName), StagedFile(kPoolDocumentName)};
  return std::ranges::all_of(std::filesystem::directory_iterator(folder), [&](const auto& entry) {
    return std::ranges::find(leftovers, entry.path().filename()) != std::end(leftovers);
  });
}

/// Runs what works on files; what the system refuses becomes a `PoolError`.
template <class Operation>
auto Guarded(Operation&& operation) {
  try {
    return operation();
  } catch (const filesystem_error& error) {
    RefusePool(error.path1(), "cannot be written: " + Reason(error));
  }
}

}  // namespace

/// The files of one change: prepared first, then made to count all at once by `pool.json`.
class PoolStore::Staging {
 public:
  explicit Staging(PoolStore& store) noexcept : store_(store) {}
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;
  ~Staging() {
    if (mayCount_) return;
    for (const path& file : files_)
      store_.ForgetStaged(file);
  }

  void Add(std::string_view name, std::span<const std::uint8_t> bytes) {
    files_.push_back(store_.folder_ / name);
    store_.files_.Write(StagedFile(files_.back()), bytes);
  }

  void Commit(PoolContents contents) {
    Add(kSheetName, BytesOf(WriteContactSheet(contents)));
    Add(kPoolDocumentName, BytesOf(WritePoolDocument(contents)));
    mayCount_ = true;
    try {
      PutLastInPlace();
    } catch (const filesystem_error&) {
      // A refusal may come late, over a network for instance: what the folder says now counts.
      store_.contents_ = LoadPool(store_.folder_);
      throw;
    }
    store_.contents_ = std::move(contents);
    while (!files_.empty())
      PutLastInPlace();
  }

 private:
  void PutLastInPlace() {
    store_.files_.Replace(StagedFile(files_.back()), files_.back());
    files_.pop_back();
  }

  PoolStore& store_;
  std::vector<path> files_;
  bool mayCount_ = false;  ///< the files prepared are not to be removed any more
};

PoolStore::PoolStore(path folder, const PoolShape& shape, FileOperations& files)
    : folder_(std::move(folder)), files_(files) {
  Guarded([&] {
    folder_ = std::filesystem::absolute(folder_);
    PrepareFolder();
    try {
      lock_ = std::make_unique<FolderLock>(folder_ / kLockName);
    } catch (const FolderInUse& inUse) {
      RefusePool(folder_, "the pool is " + std::string(inUse.what()));
    }
    if (std::filesystem::exists(folder_ / kPoolDocumentName)) {
      OpenExisting(shape);
    } else {
      Staging(*this).Commit(NewPool(shape));
    }
  });
}

/// Makes the folder if need be, and refuses one that is not ours before anything is written to it.
void PoolStore::PrepareFolder() const {
  if (std::filesystem::exists(folder_) && !std::filesystem::is_directory(folder_)) {
    RefusePool(folder_, "is a file; a pool needs a folder");
  }
  std::filesystem::create_directories(folder_);
  if (std::filesystem::exists(folder_ / kPoolDocumentName)) {
    LoadPool(folder_);
  } else if (!IsVacant(folder_)) {
    RefusePool(folder_, "the folder holds other files and no pool; choose another one");
  }
}

void PoolStore::OpenExisting(const PoolShape& shape) {
  contents_ = LoadPool(folder_);
  PoolContents reshaped = Reshape(contents_, shape, folder_);
  bool settled = false;
  for (std::uint32_t slot = 0; slot < contents_.slots.size(); ++slot) {
    settled = Settle(slot) || settled;
  }
  const path sheet = folder_ / kSheetName;
  const path document = folder_ / kPoolDocumentName;
  const bool untidy = settled || !std::filesystem::exists(sheet) ||
                      std::filesystem::exists(StagedFile(sheet)) ||
                      std::filesystem::exists(StagedFile(document));
  if (untidy || reshaped != contents_) Staging(*this).Commit(std::move(reshaped));
}

/// Finishes or undoes a change of a slot that was interrupted. True when there was one.
bool PoolStore::Settle(std::uint32_t slot) {
  const path frame = folder_ / FrameFileName(slot);
  const path picture = folder_ / PictureFileName(slot);
  const std::optional<Still>& still = contents_.slots[slot];
  const auto exists = [](const path& file) { return std::filesystem::exists(file); };
  const bool staged = exists(StagedFile(frame)) || exists(StagedFile(picture));
  const bool complete = still ? exists(picture) : !exists(frame) && !exists(picture);
  if (!staged && complete) return false;
  if (still && ReadFrameFile(StagedFile(frame), *still)) {
    files_.Replace(StagedFile(frame), frame);
  }
  files_.Remove(StagedFile(frame));
  if (still) {
    RenderPicture(slot);
  } else {
    files_.Remove(frame);
    files_.Remove(picture);
  }
  files_.Remove(StagedFile(picture));
  return true;
}

void PoolStore::RenderPicture(std::uint32_t slot) {
  const path picture = folder_ / PictureFileName(slot);
  files_.Write(StagedFile(picture), EncodePicture(*contents_.slots[slot], Frame(slot)));
  files_.Replace(StagedFile(picture), picture);
}

void PoolStore::ForgetStaged(const path& file) noexcept {
  try {
    files_.Remove(StagedFile(file));
  } catch (const filesystem_error&) {
    // What stays is recognised and removed when the pool is opened next.
  }
}

void PoolStore::StoreStill(std::uint32_t slot, const Still& still,
                           std::span<const std::uint8_t> frame) {
  Guarded([&] {
    // A prepared frame that could not be put in place before is the only one there is.
    Settle(slot);
    PoolContents contents = contents_;
    contents.slots[slot] = still;
    Staging staging(*this);
    staging.Add(FrameFileName(slot), frame);
    staging.Add(PictureFileName(slot), EncodePicture(still, frame));
    staging.Commit(std::move(contents));
  });
}

void PoolStore::ClearStill(std::uint32_t slot) {
  Change([slot](PoolContents& contents) { contents.slots[slot].reset(); });
  Guarded([&] {
    files_.Remove(folder_ / FrameFileName(slot));
    files_.Remove(folder_ / PictureFileName(slot));
  });
}

void PoolStore::Change(const std::function<void(PoolContents&)>& change) {
  Guarded([&] {
    PoolContents contents = contents_;
    change(contents);
    Staging(*this).Commit(std::move(contents));
  });
}

std::vector<std::uint8_t> PoolStore::Frame(std::uint32_t slot) const {
  return LoadFrame(folder_, contents_, slot);
}

}  // namespace mixdecks::simulator
