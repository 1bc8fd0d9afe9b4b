#include "benchmarks/table_reporter.h"

#include <cstdio>

namespace mixdecks {

bool TableReporter::ReportContext(const Context&) {
  std::puts(
      "|              |        1080p |       |          |        2160p |       |          |      "
      "|\n"
      "| Pair         |     ns/pixel |  GB/s | x memcpy |     ns/pixel |  GB/s | x memcpy | goal "
      "|\n"
      "|--------------|-------------:|------:|---------:|-------------:|------:|---------:|-----:"
      "|");
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const std::string name = run.run_name.function_name;
    const std::string pair = name.substr(0, name.rfind('/'));
    std::map<std::string, double> counters;
    for (const auto& [counter, value] : run.counters)
      counters[counter] = value;
    if (first_.empty()) {
      first_ = counters;
      continue;
    }
    const bool met = counters["x memcpy"] <= counters["goal"];
    std::printf("| %-12s | %12.3f | %5.1f | %8.2f | %12.3f | %5.1f | %7.2f%s | %4.1f |\n",
                pair.c_str(), first_["ns/pixel"], first_["GB/s"], first_["x memcpy"],
                counters["ns/pixel"], counters["GB/s"], counters["x memcpy"], met ? " " : "!",
                counters["goal"]);
    std::fflush(stdout);
    first_.clear();
    rows_ += 1;
    missed_ += met ? 0 : 1;
  }
}

void TableReporter::Finalize() {
  std::printf("\n%d %s, %d above the goal (marked !).\n", rows_, rows_ == 1 ? "pair" : "pairs",
              missed_);
}

}  // namespace mixdecks
