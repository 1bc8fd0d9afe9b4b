// What ExportControl needs of the switcher and of the document, without knowing either.
#pragma once

#include <cstdint>
#include <memory>

#include "host/export_record.h"
#include "platform/heap.h"
#include "platform/result.h"

namespace mixdecks {

class ExportControl;

/// One export, as it reaches the switcher side.
struct StillExport {
  const char16_t* name = nullptr;  ///< the still's name, borrowed for the call
  std::uint32_t slot = 0;          ///< still slot, from 0
  HeapBlock image;                 ///< interleaved 8-bit BGRA, rows without gaps
  std::int32_t width = 0;          ///< pixels
  std::int32_t height = 0;         ///< rows
  bool hasAlpha = false;           ///< whether byte 3 of a pixel means anything
  bool premultiply = false;        ///< multiply the colours by alpha
  std::int32_t mediaPlayer = -1;   ///< player (from 0) to show the still on; negative for none
};

/// The switcher side, driven by ExportControl's worker. Results come back through ExportControl's
/// posting operations, from any thread, until the destructor has returned.
class SwitcherSide {
 public:
  /// Runs on the thread that created the object; ends all threads and callbacks of it.
  virtual ~SwitcherSide() = default;
  /// Starts connecting to a dotted IPv4 address and returns.
  virtual HResult Connect(const char16_t* address) = 0;
  /// Prepares the frame and starts its upload; takes the image.
  virtual HResult Export(StillExport still) = 0;
};

/// Makes the switcher side of one ExportControl. Throws the integer 1 when the switcher service
/// cannot be created; `hostContext` and `control` outlive the object.
using SwitcherSideFactory = std::unique_ptr<SwitcherSide> (*)(ExportGlobals* hostContext,
                                                              ExportControl& control);

/// Reads the document of `record` into a BGRA image on the calling thread. Writes `hasAlpha` only
/// when it got as far as the alpha channel. 0 or a failure, and then nothing is exported.
using DocumentReader = HResult (*)(ExportRecord* record, HeapBlock& image, bool& hasAlpha);

}  // namespace mixdecks
