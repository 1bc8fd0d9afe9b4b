// Texts of others on a terminal.
#pragma once

#include <string>

namespace mixdecks {

/// `text`, in UTF-8, with its control characters written out, "\n" or "\x1B": names are not to move
/// the cursor, nor to look like lines of ours.
std::string PrintableText(const std::string& text);

}  // namespace mixdecks
