#include "tools/process_console.h"

namespace mixdecks {

std::vector<std::string> CommandLineWords(int count, char** arguments) {
  return {arguments + 1, arguments + count};
}

void PrepareStreams() {}

}  // namespace mixdecks
