// What is told of an export, gathered from the picture and from the pool.
#pragma once

#include <string>
#include <vector>

#include "simulator/pool.h"
#include "tools/export/export_operator.h"
#include "tools/export/export_options.h"
#include "tools/export/export_report.h"
#include "tools/picture/picture_decoder.h"

namespace mixdecks {

/// A report with what is known before the export: the picture and the pool.
ExportReport BeginReport(const ExportOptions& options, const Picture& picture);

/// Adds the still that the export has put into the pool. Throws `UserError` when it is not there.
void DescribeStill(ExportReport& report, const ExportOrders& orders,
                   const simulator::PoolContents& contents);

/// The rules between plug-in, host and switcher were kept, or somebody has to know: throws
/// `UserError` unless `violations` is empty.
void CheckRules(const std::vector<std::string>& violations);

}  // namespace mixdecks
