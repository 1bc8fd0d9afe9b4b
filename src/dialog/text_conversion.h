// The port between narrow text (the host's file name, message boxes) and wide text.
//
// Narrow text is in the thread's code page on Windows and in UTF-8 elsewhere, where bytes that
// are no UTF-8 stand for the characters of the same number. Any thread.
#pragma once

#include <string>

namespace mixdecks {

/// Both throw `std::bad_alloc` when there is no memory.
std::u16string WideText(const char* narrow);
/// Characters that the code page lacks become a substitute. A null pointer gives empty text.
std::string NarrowText(const char16_t* wide);

}  // namespace mixdecks
