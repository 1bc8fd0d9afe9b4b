// What the user is told when the system gives out.
#include <atomic>

#include "dialog/window_messages.h"
#include "tests/e2e/import_fault.h"
#include "tests/e2e/plugin_fixture.h"

namespace mixdecks::e2e {
namespace {

class Faults : public PluginTest {};

constexpr std::size_t kFrameBytes = 1920 * 1080 * 4;

void* WINAPI RefuseFrames(HANDLE heap, DWORD flags, SIZE_T bytes) {
  return bytes >= kFrameBytes ? nullptr : HeapAlloc(heap, flags, bytes);
}

std::atomic<int> threads = 0;

HANDLE WINAPI RefuseTheSecondThread(SECURITY_ATTRIBUTES* security, SIZE_T stack,
                                    LPTHREAD_START_ROUTINE function, void* argument, DWORD flags,
                                    DWORD* id) {
  if (++threads == 2) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  return CreateThread(security, stack, function, argument, flags, id);
}

TEST_F(Faults, OfMemoryAreToldAndTheDialogWorksAgain) {
  Session session;
  session.Start([](DialogDriver& dialog) {
    ASSERT_TRUE(dialog.WaitUntilConnected());
    {
      const ImportFault fault(GetModuleHandleW(kPluginFile), "HeapAlloc", RefuseFrames);
      dialog.Press(kExportButton);
      ExpectBox(dialog, nullptr, "Error",
                "There is not enough memory available to run ORVA Switcher Media Pool");
      dialog.WaitUntilUsable();
    }
    dialog.Press(kExportButton);
    dialog.WaitUntilClosed();
  });
  StillIn(session.simulator, 0);
}

/// The first thread is the worker's, the second one the connect's.
TEST_F(Faults, OfAThreadAreToldAndTheConnectIsTriedAgain) {
  Session session;
  threads = 0;
  const ImportFault fault(GetModuleHandleW(kPluginFile), "CreateThread", RefuseTheSecondThread);
  session.Start([](DialogDriver& dialog) {
    ExpectBox(dialog, nullptr, "Error", "An unknown error has occured.");
    EXPECT_TRUE(dialog.WaitUntilConnected());
  });
  EXPECT_EQ(threads, 3);
}

}  // namespace
}  // namespace mixdecks::e2e
