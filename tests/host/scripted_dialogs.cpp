#include "tests/host/scripted_dialogs.h"

#include "plugin/front_end.h"

namespace mixdecks {

ScriptedDialogs& Dialogs() {
  static ScriptedDialogs dialogs;
  return dialogs;
}

HostDialogs FrontEndDialogs() {
  return {.runAboutDialog = [](void* window) -> std::intptr_t {
            Dialogs().aboutWindows.push_back(window);
            return Dialogs().onAbout ? Dialogs().onAbout() : 0;
          },
          .runExportDialog = [](void* window, ExportGlobals* globals) -> std::intptr_t {
            Dialogs().exportWindows.push_back(window);
            return Dialogs().onExport ? Dialogs().onExport(globals) : 0;
          }};
}

}  // namespace mixdecks
