#include "tests/tools/command_bench.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "simulator/pool.h"
#include "simulator/unicode.h"
#include "tools/command_line.h"
#include "tools/path_text.h"

namespace mixdecks::test {

std::string CommandBench::Write(std::string_view name, const Bytes& bytes) const {
  return Write(name, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::string CommandBench::Write(std::string_view name, std::string_view text) const {
  const std::string path = Path(name);
  std::ofstream(PathOf(path), std::ios::binary) << text;
  return path;
}

std::string CommandBench::Path(std::string_view name) const {
  return simulator::PathText(folder_.Path() / PathOf(std::string(name)));
}

CommandResult CommandBench::Run(const std::vector<std::string>& words) const {
  std::ostringstream out;
  std::ostringstream err;
  const int exitCode = RunCommandLine(words, {out, err});
  return {exitCode, out.str(), err.str()};
}

CommandResult CommandBench::Export(std::vector<std::string> words) const {
  words.insert(words.begin(), {"export", "--pool", Pool()});
  return Run(words);
}

Bytes CommandBench::Frame(std::uint32_t slot) const {
  try {
    return simulator::LoadFrame(Pool(), simulator::LoadPool(Pool()), slot - 1);
  } catch (const simulator::PoolError& error) {
    ADD_FAILURE() << error.what();
    return {};
  }
}

void CommandBench::ExpectWholePool() const {
  try {
    const simulator::PoolContents contents = simulator::LoadPool(Pool());
    for (std::uint32_t slot = 0; slot < contents.slots.size(); ++slot) {
      if (contents.slots[slot]) simulator::LoadFrame(Pool(), contents, slot);
    }
  } catch (const simulator::PoolError& error) {
    ADD_FAILURE() << error.what();
  }
}

}  // namespace mixdecks::test
