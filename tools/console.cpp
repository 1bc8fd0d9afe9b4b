#include "tools/console.h"

#include "tools/printable_text.h"

namespace mixdecks {

void Console::Report(const UserError& error) const {
  err << "mixdecks: " << PrintableText(error.What());
  if (!error.Why().empty()) err << ": " << PrintableText(error.Why());
  err << '\n';
  if (!error.Remedy().empty()) err << "  what to do: " << PrintableText(error.Remedy()) << '\n';
}

void Console::Warn(const std::string& warning) const {
  err << "mixdecks: warning: " << PrintableText(warning) << '\n';
}

}  // namespace mixdecks
