#include "simulator/pool.h"

#include "simulator/checksum.h"
#include "simulator/file_reading.h"
#include "simulator/pool_document.h"
#include "simulator/pool_files.h"
#include "simulator/unicode.h"

namespace mixdecks::simulator {
namespace {

using std::filesystem::filesystem_error;
using std::filesystem::path;

constexpr std::uint64_t kMostDocumentBytes = 16u << 20;

std::string SlotFileName(std::uint32_t slot, std::string_view ending) {
  const std::string number = std::to_string(slot + 1);
  return (number.size() < 2 ? "slot-0" : "slot-") + number + std::string(ending);
}

bool HasFrameSize(const path& file, const Still& still) {
  std::error_code error;
  return std::filesystem::file_size(file, error) == still.Bytes() && !error;
}

void CheckFrameFiles(const path& folder, const PoolContents& contents) {
  for (std::uint32_t slot = 0; slot < contents.slots.size(); ++slot) {
    if (!contents.slots[slot]) continue;
    const path file = folder / FrameFileName(slot);
    // A writer beside us may rename the one to the other between the first two looks.
    const Still& still = *contents.slots[slot];
    if (HasFrameSize(file, still) || HasFrameSize(StagedFile(file), still)) continue;
    if (HasFrameSize(file, still)) continue;
    RefusePool(file,
               "the frame is missing or has the wrong size; put it back, or take the still "
               "out of pool.json");
  }
}

}  // namespace

std::string FrameFileName(std::uint32_t slot) {
  return SlotFileName(slot, ".ay10");
}

std::string PictureFileName(std::uint32_t slot) {
  return SlotFileName(slot, ".png");
}

path StagedFile(const path& file) {
  path staged = file;
  staged += ".new";
  return staged;
}

void RefusePool(const path& subject, std::string_view reason) {
  throw PoolError(PathText(subject) + ": " + std::string(reason));
}

std::optional<std::vector<std::uint8_t>> ReadFrameFile(const path& file, const Still& still) {
  if (!HasFrameSize(file, still)) return std::nullopt;
  std::vector<std::uint8_t> frame = ReadFile(file, still.Bytes());
  if (Checksum(frame) != still.checksum) return std::nullopt;
  return frame;
}

PoolContents LoadPool(const path& folder) {
  const path document = folder / kPoolDocumentName;
  try {
    if (!std::filesystem::is_directory(folder)) RefusePool(folder, "there is no such folder");
    if (!std::filesystem::exists(document)) {
      RefusePool(folder, "the folder holds no pool: pool.json is missing");
    }
    const std::string text = ReadTextFile(document, kMostDocumentBytes);
    PoolContents contents = ReadPoolDocument(text, PathText(document));
    CheckFrameFiles(folder, contents);
    return contents;
  } catch (const filesystem_error& error) {
    RefusePool(document, "cannot be read: " + Reason(error));
  }
}

std::vector<std::uint8_t> LoadFrame(const path& folder, const PoolContents& contents,
                                    std::uint32_t slot) {
  if (slot >= contents.slots.size() || !contents.slots[slot]) {
    RefusePool(folder, "slot " + std::to_string(slot + 1) + " holds no still");
  }
  const path file = folder / FrameFileName(slot);
  const Still& still = *contents.slots[slot];
  try {
    for (const path& candidate : {file, StagedFile(file), file}) {
      if (auto frame = ReadFrameFile(candidate, still)) return *std::move(frame);
    }
  } catch (const filesystem_error& error) {
    RefusePool(file, "cannot be read: " + Reason(error));
  }
  RefusePool(file, "the frame is not the one that pool.json tells of; its checksum differs");
}

}  // namespace mixdecks::simulator
