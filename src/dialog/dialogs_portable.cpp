#include "dialog/dialogs.h"

namespace mixdecks {

HostDialogs SystemDialogs() {
  return HeadlessDialogs();
}

}  // namespace mixdecks
