// The library's front end: the dialogs as its user sees them.

#include "dialog/dialogs.h"
#include "plugin/front_end.h"

namespace mixdecks {

HostDialogs FrontEndDialogs() {
  return SystemDialogs();
}

}  // namespace mixdecks
