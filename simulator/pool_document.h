// `pool.json`: a pool's contents as text.
#pragma once

#include <string>
#include <string_view>

#include "simulator/pool.h"

namespace mixdecks::simulator {

inline constexpr char kPoolDocumentName[] = "pool.json";

/// The text of `pool.json` for these contents.
std::string WritePoolDocument(const PoolContents& contents);

/// Reads such a text; `source` stands for the file's name in messages. Throws `PoolError` for
/// anything that this simulator would not have written.
PoolContents ReadPoolDocument(std::string_view text, std::string_view source);

}  // namespace mixdecks::simulator
