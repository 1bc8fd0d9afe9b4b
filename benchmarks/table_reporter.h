// Prints benchmarks of pairs as one table: a row for each pair, columns for each picture size.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace mixdecks {

/// Expects benchmarks named "PAIR/SIZE" with the counters "ns/pixel", "GB/s" and "x memcpy", both
/// sizes of a pair one after the other, and "goal", which the second size's multiple is held
/// against. The table is Markdown that reads well on a terminal too.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  std::map<std::string, double> first_;  ///< the counters of the pair's first size
  int rows_ = 0;
  int missed_ = 0;
};

}  // namespace mixdecks
