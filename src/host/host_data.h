// The record that the plug-in keeps between selectors in the host's data word. Runs on the host's
// main thread.
#pragma once

#include <cstdint>

#include "host/export_record.h"

namespace mixdecks {

/// Locks the handle in `*data`, made first when there is none, and fills the globals behind it
/// with `result` and `record`. `*result` becomes 0. Null when there is no memory: then a handle
/// that was made is gone again, `*data` is as before, and nothing is locked.
ExportGlobals* AcquireHostData(std::int16_t* result, ExportRecord* record, std::intptr_t* data);

/// Unlocks the handle in `*data`, disposes of it and clears the word. `globals` is gone then.
/// Does nothing when the word is clear.
void ReleaseHostData(const ExportGlobals* globals, std::intptr_t* data);

}  // namespace mixdecks
