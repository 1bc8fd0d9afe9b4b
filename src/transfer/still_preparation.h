// From the document's image to a frame of the switcher: fit, convert, premultiply, copy.
//
// All of it runs on the worker. The transfer mutex is taken around the service calls alone, and
// around the copying of rows into the frame; a switcher that went away meanwhile is an error like
// any other. The image is replaced by each step that changes its size or format, and the old one
// freed at once, so that no more than two images live at a time beside the frame.
#pragma once

#include <cstdint>

#include "platform/heap.h"
#include "transfer/switcher_connection.h"
#include "transfer/transfer_error.h"

namespace mixdecks {

/// A packed 8-bit BGRA image on its way to a frame.
struct StillImage {
  HeapBlock pixels;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool hasAlpha = false;  ///< whether byte 3 of a pixel means anything
};

/// Runs the whole chain up to its first error and frees the image in any case. `frame` holds a
/// filled frame on success; after an error it may hold one that is not filled.
TransferError PrepareFrame(SwitcherConnection& connection, StillImage image, bool premultiply,
                           ServicePointer<ITMKSwitcherFrame>& frame);

/// Scales the image to the size of the switcher's video mode unless it has that size already.
TransferError FitToVideoMode(SwitcherConnection& connection, StillImage& image);

/// Makes an image without alpha opaque and converts it to the frame format, which is stored in
/// `format`, with the matrix of the switcher's video mode.
TransferError ConvertToFrameFormat(SwitcherConnection& connection, StillImage& image,
                                   std::uint32_t& format);

}  // namespace mixdecks
