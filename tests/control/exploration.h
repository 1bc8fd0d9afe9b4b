// Runs a piece of threaded code once for every order in which its threads can meet.
//
// A program that links this replaces the wait primitives: its threads run one at a time, and at
// every operation that may wait the exploration decides who goes on. It tries all decisions, up to
// a number of times that a thread is stopped although it could go on. A state in which nobody can
// go on is found at once, whatever the clock says.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace mixdecks::testing {

struct ExplorationResult {
  std::size_t orders = 0;  ///< how many were run
  std::string failure;     ///< empty when all ended well; else what went wrong, and in which order
};

/// Runs `scenario` on a thread of its own, once for each order. The threads that it starts through
/// the wait primitives take part. Ends with the first order in which all threads stand still, a
/// waiting object is misused or left behind, or a test's expectation fails. Threads that stand
/// still are left behind.
ExplorationResult Explore(int interruptions, std::function<void()> scenario);

// For code inside an exploration.

/// A place where another thread may come in.
void SchedulingPoint();
/// Waits until `condition` holds. It may look at anything that the exploration's threads change.
void WaitUntil(std::function<bool()> condition);
/// Waits until no other thread can go on.
void WaitUntilIdle();
/// Lets the waiting object or thread that is created as number `number` (from 1) fail. 0: none.
void FailCreation(int number);
/// Whether the event pair that was created as number `pair` (from 1) was destroyed with a signal
/// that nobody had waited for.
bool EndedSignalled(int pair);

}  // namespace mixdecks::testing
