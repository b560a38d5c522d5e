#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "reports/report_course.h"
#include "store/store.h"

// The project file as the reports read it: the parcels in the order of their
// names, and the stored rows of each parcel in the order of RowNo.
namespace parvenna::reports {

struct ParcelEntry {
  store::Value ParcelID;
  store::Value Parcel;
  store::Value Closure;  // as saved by the editor
};

// "select * FROM tblParcel  ORDER BY Parcel". Throws the store's errors.
std::vector<ParcelEntry> ReadParcels(store::Database& db);

// The rows of the parcels, found by ParcelID and ordered by RowNo, as the
// per-parcel query gives them. For a report on one parcel the rows of that
// parcel alone are read; for many, all rows are read once and sorted here,
// since tblMeasurements has no index and one query per parcel would scan the
// whole table each time.
class MeasurementSource {
 public:
  // Reads every parcel's rows at once.
  static MeasurementSource All(store::Database& db);
  // Reads the rows of each parcel when asked.
  static MeasurementSource PerParcel(store::Database& db);

  // The rows of one parcel in the order of RowNo; empty for an id that is
  // Null or has none. Valid until the next call.
  std::span<const MeasurementRow* const> RowsOf(const store::Value& parcelId);

 private:
  explicit MeasurementSource(store::Database* db) : db_(db) {}
  store::Database* db_;  // set when reading per parcel
  std::vector<MeasurementRow> rows_;  // in the order of the file
  std::unordered_map<long, std::vector<std::uint32_t>> byParcel_;
  std::vector<const MeasurementRow*> current_;
};

}  // namespace parvenna::reports
