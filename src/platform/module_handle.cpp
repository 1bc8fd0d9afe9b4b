#include "platform/module_handle.h"

namespace mixdecks {
namespace {

void* moduleHandle = nullptr;

}  // namespace

void* ModuleHandle() noexcept {
  return moduleHandle;
}

void SetModuleHandle(void* instance) noexcept {
  moduleHandle = instance;
}

}  // namespace mixdecks
