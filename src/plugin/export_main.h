// The function that the plug-in exports to the host, called on the host's main thread.
#pragma once

#include <cstdint>

/// Runs one selector with the program's dialogs. `record`, `data` and `result` are the host's: its
/// parameter record, the word that keeps the plug-in's handle, and the word that takes the result.
extern "C" void MixdecksExportMain(std::int16_t selector, void* record, std::intptr_t* data,
                                   std::int16_t* result);
