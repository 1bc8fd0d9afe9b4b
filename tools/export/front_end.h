// The plug-in's two dialogs in the companion command: an operator in place of the export dialog,
// and nothing to see for the about box.
#pragma once

#include "tools/export/export_operator.h"

namespace mixdecks {

/// Lets `exportOperator` sit before the export dialog while this lives. One at a time, on the
/// thread that calls the plug-in's entry.
class SeatedOperator {
 public:
  explicit SeatedOperator(ExportOperator& exportOperator) noexcept;
  ~SeatedOperator();
  SeatedOperator(const SeatedOperator&) = delete;
  SeatedOperator& operator=(const SeatedOperator&) = delete;
};

}  // namespace mixdecks
