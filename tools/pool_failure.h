// What the simulator finds wrong with a pool or a scenario, told as the command tells its errors.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "tools/user_error.h"

namespace mixdecks {

/// Refuses `--pool ""`, which would stand for the current folder. Throws `UserError`.
void CheckPoolName(const std::string& pool);

/// `text` is that of a `PoolError`: the pool's folder or a file in it, why, perhaps what to do.
UserError PoolFailure(const std::filesystem::path& pool, std::string_view text);

/// `text` is that of a `ScenarioError`: the file, the place in it, why.
UserError ScenarioFailure(const std::filesystem::path& scenario, std::string_view text);

}  // namespace mixdecks
