#include <windows.h>

#include "tests/pixelconvert/harness/fault_trap.h"

namespace mixdecks::proof {
namespace {

// Everything that is needed after the jump back lives here, not in registers or on the stack.
CONTEXT returnPoint;
Fault lastFault;
volatile bool armed = false;
volatile bool faulted = false;

bool Describe(const EXCEPTION_RECORD& record) {
  switch (record.ExceptionCode) {
    case EXCEPTION_ACCESS_VIOLATION:
      lastFault = {FaultKind::kAccess, static_cast<std::uintptr_t>(record.ExceptionInformation[1])};
      return true;
    case EXCEPTION_ILLEGAL_INSTRUCTION:
      lastFault = {FaultKind::kIllegalInstruction,
                   reinterpret_cast<std::uintptr_t>(record.ExceptionAddress)};
      return true;
    default:
      return false;
  }
}

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
  if (!armed || !Describe(*exception->ExceptionRecord)) return EXCEPTION_CONTINUE_SEARCH;
  armed = false;
  faulted = true;
  // Resumes behind the capture in RunTrapped, whose frame is still there.
  *exception->ContextRecord = returnPoint;
  return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

std::optional<Fault> RunTrapped(const std::function<void()>& code) {
  static void* const handler = AddVectoredExceptionHandler(1, OnException);
  (void)handler;
  faulted = false;
  armed = false;
  RtlCaptureContext(&returnPoint);
  if (faulted) return lastFault;
  armed = true;
  code();
  armed = false;
  return std::nullopt;
}

}  // namespace mixdecks::proof
