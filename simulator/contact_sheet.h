// `index.html`: a pool to look at in a browser, without a server.
#pragma once

#include <string>
#include <string_view>

#include "simulator/pool.h"

namespace mixdecks::simulator {

/// The page for these contents. It refers to the pool's pictures beside it and to nothing else.
std::string WriteContactSheet(const PoolContents& contents);

/// Text as it may stand in an element or a quoted attribute. Control characters show as symbols.
std::string EscapeHtml(std::u16string_view text);

}  // namespace mixdecks::simulator
