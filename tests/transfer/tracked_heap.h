// The heap of the memory tests, linked in place of the product's: it knows how much is held, and
// it can refuse. Any thread may allocate meanwhile.
#pragma once

#include <cstddef>

namespace mixdecks {

/// Begins counting anew: requests from 0, the peak from what is held now. `failAt` is the request
/// to refuse, from 1; 0 for none.
void RestartHeap(int failAt = 0);
int HeapRequests();
std::size_t HeapBytesHeld();
std::size_t HeapBytesAtPeak();

}  // namespace mixdecks
