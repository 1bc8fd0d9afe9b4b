#include "tools/console.h"

namespace mixdecks {

void Console::Report(const UserError& error) const {
  err << "mixdecks: " << error.What();
  if (!error.Why().empty()) err << ": " << error.Why();
  err << '\n';
  if (!error.Remedy().empty()) err << "  what to do: " << error.Remedy() << '\n';
}

}  // namespace mixdecks
