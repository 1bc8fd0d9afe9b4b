#include "dialog/dialogs.h"
#include "host/channel_reader.h"
#include "transfer/switcher_transfer.h"

namespace mixdecks {

ExportDialogState& ModuleDialogState() {
  static ExportDialogState state;
  return state;
}

const ExportDialogServices& SystemDialogServices() {
  static const ExportDialogServices services = {{CreateSwitcherTransfer, ReadChannelDocument},
                                                &SystemPreferences()};
  return services;
}

}  // namespace mixdecks
