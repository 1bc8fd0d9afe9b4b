// The companion command: Mixdecks where there is no host.

#include <iostream>

#include "tools/command_line.h"
#include "tools/interrupt.h"
#include "tools/process_console.h"

int main(int argc, char** argv) {
  mixdecks::PrepareStreams();
  mixdecks::WatchForInterrupt();
  return mixdecks::RunCommandLine(mixdecks::CommandLineWords(argc, argv), {std::cout, std::cerr});
}
