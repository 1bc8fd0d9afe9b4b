#include "plugin/load_notification.h"

#include "control/wait_primitives.h"
#include "platform/module_handle.h"

namespace mixdecks {
namespace {

WaitMutex loadMutex;

// A system that was refused at attach still notifies of the detach: then there is nothing to close.
bool loadMutexExists = false;

bool Attach() noexcept {
  loadMutexExists = CreateWaitMutex(loadMutex) == 0;
  return loadMutexExists;
}

void Detach() noexcept {
  if (!loadMutexExists) return;
  DestroyWaitMutex(loadMutex);
  loadMutexExists = false;
}

}  // namespace

bool OnLoadNotification(std::uint32_t reason, void* instance) noexcept {
  SetModuleHandle(instance);
  switch (reason) {
    case kProcessAttach:
      return Attach();
    case kProcessDetach:
      Detach();
      return true;
    default:
      return true;
  }
}

}  // namespace mixdecks
