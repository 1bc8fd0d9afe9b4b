// How ExportControl's worker wakes the front end's thread.
#pragma once

namespace mixdecks {

/// Implemented by the front end, called on the worker thread.
class ExportControlListener {
 public:
  virtual ~ExportControlListener() = default;
  /// Makes the front end's thread call `ExportControl::RunPendingUICommand` soon. Returns at once.
  virtual void WakeUIThread() = 0;
};

}  // namespace mixdecks
