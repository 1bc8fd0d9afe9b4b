#include "tools/export/front_end.h"

#include "plugin/front_end.h"

namespace mixdecks {
namespace {

ExportOperator* seated = nullptr;

std::intptr_t RunAboutDialog(void*) {
  return 0;
}

std::intptr_t RunExportDialog(void*, ExportGlobals* globals) {
  return seated == nullptr ? 0 : seated->Operate(globals);
}

}  // namespace

SeatedOperator::SeatedOperator(ExportOperator& exportOperator) noexcept {
  seated = &exportOperator;
}

SeatedOperator::~SeatedOperator() {
  seated = nullptr;
}

HostDialogs FrontEndDialogs() {
  return {RunAboutDialog, RunExportDialog};
}

}  // namespace mixdecks
