#pragma once

#include <optional>

namespace parvenna::reports {

// The choice of the report window that decides which parcels a report takes.
struct FilterChoice {
  bool parcelChosen = false;       // cbxParcel.Text is not empty
  std::optional<long> chosenId;    // ItemData of the chosen entry; none without one
  bool all = false;                // optPassFail(0)
  bool pass = false;               // optPassFail(1)
  bool fail = false;               // optPassFail(2)
  double tolerance = 0;            // ClosureTolerance
};

// ReportFilter: a chosen parcel alone; otherwise "All", or a closure at most
// the tolerance for "Pass", above it for "Fail". A closure equal to the
// tolerance passes. Each report brings its own closure: the full report the
// one saved with the parcel, the summary the one it has just worked out, the
// picture report the editor's label. A closure that is missing (a Null in
// the file) is taken by "All" only. With no option set and no parcel chosen
// nothing is taken.
inline bool ReportFilter(const FilterChoice& choice, long parcelId,
                         std::optional<double> closure) {
  if (choice.parcelChosen) return choice.chosenId && *choice.chosenId == parcelId;
  if (choice.all) return true;
  if (!closure) return false;
  return (choice.pass && *closure <= choice.tolerance) ||
         (choice.fail && *closure > choice.tolerance);
}

}  // namespace parvenna::reports
