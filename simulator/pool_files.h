// The files of a pool folder, and which of them a reader may trust.
//
// A change is prepared in files whose names end in `.new`, and takes effect when `pool.json` is
// replaced. A frame whose `.new` file is still there afterwards is the one that `pool.json` tells
// of; its checksum says so.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "simulator/pool.h"

namespace mixdecks::simulator {

/// The file in which the next version of `file` is prepared.
std::filesystem::path StagedFile(const std::filesystem::path& file);

/// Throws the `PoolError` for `subject`, a path, with the reason.
[[noreturn]] void RefusePool(const std::filesystem::path& subject, std::string_view reason);

/// The frame that `still` describes, or nothing when `file` is absent or holds other bytes.
std::optional<std::vector<std::uint8_t>> ReadFrameFile(const std::filesystem::path& file,
                                                       const Still& still);

}  // namespace mixdecks::simulator
