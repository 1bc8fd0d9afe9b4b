// The companion command: Mixdecks where there is no host.

#include <iostream>
#include <string>
#include <vector>

#include "tools/command_line.h"
#include "tools/interrupt.h"

int main(int argc, char** argv) {
  mixdecks::WatchForInterrupt();
  return mixdecks::RunCommandLine(std::vector<std::string>(argv + 1, argv + argc),
                                  {std::cout, std::cerr});
}
