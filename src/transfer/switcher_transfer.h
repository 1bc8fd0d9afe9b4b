// SwitcherTransfer owns the connection to one switcher.
#pragma once

#include <memory>

#include "control/switcher_side.h"

namespace mixdecks {

/// Makes the switcher side that talks to the switcher service. Throws the integer 1 when the
/// service cannot be created, after telling the user in case the service gave no object. Null when
/// there is no memory.
std::unique_ptr<SwitcherSide> CreateSwitcherTransfer(ExportGlobals* hostContext,
                                                     ExportControl& control);

}  // namespace mixdecks
