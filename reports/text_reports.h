#pragma once

#include <string>

#include "reports/report_course.h"
#include "reports/report_filter.h"
#include "store/store.h"

// The two text reports, written into strings that become the work files.
namespace parvenna::reports {

// Where a full report writes: the aligned text and the comma-separated rows.
struct ReportStreams {
  std::string text;
  std::string csv;
};

// The block of one parcel, into both streams. Coordinates, area, closure and
// its direction come first and a failure there leaves no block at all; from
// the precision on, each statement stands alone, so a direction or a number
// too wide for its column loses that one text line while its CSV row is
// still written.
void LotBody(const ReportSettings& settings, ReportWork& work, ReportStreams& out,
             const std::string& name, int count);

enum class BuildResult { Built, NoData };

// The full report of the parcels that the filter takes, in the order of
// their names; a parcel without courses leaves no trace. NoData when the
// project has no parcel at all.
BuildResult WriteFullReport(store::Database& db, const FilterChoice& choice,
                            const ReportSettings& settings, ReportWork& work,
                            ReportStreams& out);

// The summary: one head, then one row a parcel with courses that the filter
// takes, judged by the closure worked out here.
BuildResult WriteSummaryReport(store::Database& db, const FilterChoice& choice,
                               const ReportSettings& settings, ReportWork& work,
                               std::string& out);

}  // namespace parvenna::reports
