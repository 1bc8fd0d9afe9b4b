// The record that travels through ExportControl's queue. The queue owns it until the worker pops
// it, the worker until it is dispatched; a record owns its strings and its image.
#pragma once

#include <cstdint>

#include "platform/heap.h"
#include "platform/text.h"

namespace mixdecks {

/// What a command asks for. Connect and export run on the worker, the results after them on the
/// front end's thread, and the shutdown nowhere: it only wakes the worker.
enum class CommandType : std::uint32_t {
  CmdConnect = 0,
  CmdExport = 1,
  CmdConnectResult = 2,
  CmdExportFinished = 3,
  CmdStillInfo = 4,
  CmdDisconnected = 5,
  CmdMessageBox = 6,
  CmdShutdown = 7,
};

/// How each type uses the fields; what it does not use keeps its default.
///
// clang-format off
/// | type                        | flag        | index        | extra   | text    | text2   |
/// |-----------------------------|-------------|--------------|---------|---------|---------|
/// | CmdConnect                  |             |              |         | address |         |
/// | CmdExport (image, hasAlpha) | premultiply | slot         | player  | name    |         |
/// | CmdConnectResult (reason)   | connected   | stills count | players |         |         |
/// | CmdExportFinished           | success     |              |         |         |         |
/// | CmdStillInfo                | in use      | slot         |         | name    |         |
/// | CmdDisconnected             |             |              |         |         |         |
/// | CmdMessageBox               |             |              |         | caption | message |
// clang-format on
struct ExportCommand {
  CommandType type = CommandType::CmdShutdown;
  bool flag = false;
  bool hasAlpha = false;    ///< the image has an alpha channel
  std::uint32_t index = 0;  ///< slots count from 0
  std::int32_t extra = 0;   ///< media players count from 0; negative for none
  Text text{};
  Text text2{};
  HeapBlock image{};         ///< BGRA pixels, rows without gaps
  std::uint32_t reason = 0;  ///< four-character code of a failed connect, or 0
};

}  // namespace mixdecks
