// The files beside a pool by which a simulator that serves other programs talks with its user: it
// has no window and no console of its own.
#pragma once

#include <filesystem>

namespace mixdecks::simulator {

struct PoolNeighbours {
  /// Read if it exists.
  std::filesystem::path scenario;
  /// Why no simulator could be made: one line.
  std::filesystem::path failure;
  /// What the clients of the last one did against the rules, a line each.
  std::filesystem::path violations;
};

/// Absolute paths, for an absolute or a relative one of the pool's folder.
inline PoolNeighbours NeighboursOf(const std::filesystem::path& pool) {
  std::filesystem::path folder = std::filesystem::absolute(pool);
  if (!folder.has_filename()) folder = folder.parent_path();  // it was written "pool/"
  std::filesystem::path scenario = folder;
  scenario += ".scenario.json";
  return {scenario, folder.parent_path() / "simulator-error.txt",
          folder.parent_path() / "simulator-violations.txt"};
}

}  // namespace mixdecks::simulator
