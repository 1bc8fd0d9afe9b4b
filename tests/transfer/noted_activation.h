// Entering and leaving the service without COM, so that a test sees when it happens.
//
// A program that links this has it in place of the product's activation.
#pragma once

#include <vector>

#include "platform/result.h"

namespace mixdecks {

/// What entering the service gives.
HResult& ResultOfEntering();

/// For every time the service was left: how many of its objects were alive.
std::vector<int>& ObjectsAliveAtLeaving();

}  // namespace mixdecks
