#include "host/host_data.h"

#include <new>

#include "host/data_handle.h"
#include "host/plugin_entry.h"

namespace mixdecks {
namespace {

constexpr std::int32_t kGlobalsBytes = sizeof(ExportGlobals);

ExportGlobals* LockGlobals(std::intptr_t handle, std::int16_t* result, ExportRecord* record) {
  void* memory = LockDataHandle(record->handleProcs, handle, kGlobalsBytes);
  if (memory == nullptr) return nullptr;
  *result = kHostResultNone;
  return new (memory) ExportGlobals{result, record};
}

}  // namespace

ExportGlobals* AcquireHostData(std::int16_t* result, ExportRecord* record, std::intptr_t* data) {
  if (*data != 0) return LockGlobals(*data, result, record);

  const std::intptr_t handle = NewDataHandle(record->handleProcs, kGlobalsBytes);
  if (handle == 0) return nullptr;
  ExportGlobals* globals = LockGlobals(handle, result, record);
  if (globals == nullptr) {
    DisposeDataHandle(record->handleProcs, handle);
    return nullptr;
  }
  *data = handle;
  return globals;
}

void ReleaseHostData(const ExportGlobals* globals, std::intptr_t* data) {
  if (*data == 0) return;
  const HostHandleProcs* procs = globals->record->handleProcs;
  UnlockDataHandle(procs, *data);
  DisposeDataHandle(procs, *data);
  *data = 0;
}

}  // namespace mixdecks
