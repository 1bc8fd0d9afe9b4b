// How the system loads and unloads the library.

#include <windows.h>

#include "plugin/load_notification.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* /*reserved*/) {
  return mixdecks::OnLoadNotification(reason, instance) ? TRUE : FALSE;
}
