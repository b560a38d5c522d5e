#include "reports/report_source.h"

#include <algorithm>

#include "store/paths.h"

namespace parvenna::reports {
namespace {

bool SameName(std::string_view a, std::string_view b) {
  return store::UpperCase(a) == store::UpperCase(b);
}

constexpr const char* kColumns[] = {"RowNo", "RowType", "Length", "Direction",
                                    "Arc",   "Radius",  "Plus"};

// Positions of the record's columns in a cursor over tblMeasurements; -1
// for a column the file lacks, which then reads as Null.
std::array<int, 7> ColumnPositions(const store::ForwardCursor& rs) {
  std::array<int, 7> positions{};
  for (std::size_t c = 0; c < positions.size(); ++c) {
    positions[c] = -1;
    for (int f = 0; f < rs.FieldCount(); ++f) {
      if (SameName(rs.Field(f).Name, kColumns[c])) positions[c] = f;
    }
  }
  return positions;
}

// A field read as the record takes it; empty when it is Null or fails to
// read. The Null is tested first only because a line's three empty curve
// columns would otherwise raise three errors a row.
template <class Read>
auto FieldOf(const store::Value& value, Read read) -> std::optional<decltype(read(value))> {
  if (value.IsNull()) return std::nullopt;
  try {
    return read(value);
  } catch (const RunError&) {
    return std::nullopt;
  }
}

// The sort key of RowNo as the query orders it: a Null before every number.
double RowNoKey(const store::Value& rowNo) {
  if (rowNo.IsNull()) return -1e300;
  try {
    return rowNo.AsDouble();
  } catch (const RunError&) {
    return 1e300;  // a text after every number
  }
}

MeasurementRow RowOf(const store::ForwardCursor& rs, const std::array<int, 7>& positions) {
  const auto value = [&](std::size_t c) {
    return positions[c] >= 0 ? rs.Get(positions[c]) : store::Value();
  };
  const auto integer = [](const store::Value& v) { return v.AsInteger(); };
  const auto number = [](const store::Value& v) { return v.AsDouble(); };
  MeasurementRow row;
  const store::Value rowNo = value(0);
  row.RowNo = FieldOf(rowNo, integer);
  row.order = RowNoKey(rowNo);
  row.RowType = FieldOf(value(1), integer);
  row.Length = FieldOf(value(2), number);
  row.Direction = FieldOf(value(3), [](const store::Value& v) { return v.AsText(); });
  row.Arc = FieldOf(value(4), number);
  row.Radius = FieldOf(value(5), number);
  row.Plus = FieldOf(value(6), integer);
  return row;
}

bool IdOf(const store::Value& value, long& id) {
  if (value.IsNull()) return false;
  try {
    id = value.AsLong();
    return true;
  } catch (const RunError&) {
    return false;
  }
}

}  // namespace

std::vector<ParcelEntry> ReadParcels(store::Database& db) {
  store::ForwardCursor rs = db.OpenForwardCursor("select * FROM tblParcel  ORDER BY Parcel");
  std::vector<ParcelEntry> parcels;
  for (; !rs.Eof(); rs.MoveNext()) {
    ParcelEntry entry;
    entry.ParcelID = rs.Get("ParcelID");
    entry.Parcel = rs.Get("Parcel");
    entry.Closure = rs.Get("Closure");
    parcels.push_back(std::move(entry));
  }
  rs.Close();
  return parcels;
}

MeasurementSource MeasurementSource::All(store::Database& db) {
  MeasurementSource source(nullptr);
  store::ForwardCursor rs = db.OpenForwardCursor("select * FROM tblMeasurements");
  const auto positions = ColumnPositions(rs);
  int idPosition = -1;
  for (int f = 0; f < rs.FieldCount(); ++f) {
    if (SameName(rs.Field(f).Name, "ParcelID")) idPosition = f;
  }
  for (; !rs.Eof(); rs.MoveNext()) {
    long id = 0;
    if (idPosition < 0 || !IdOf(rs.Get(idPosition), id)) continue;
    source.byParcel_[id].push_back(static_cast<std::uint32_t>(source.rows_.size()));
    source.rows_.push_back(RowOf(rs, positions));
  }
  rs.Close();
  return source;
}

MeasurementSource MeasurementSource::PerParcel(store::Database& db) {
  return MeasurementSource(&db);
}

std::span<const MeasurementRow* const> MeasurementSource::RowsOf(const store::Value& parcelId) {
  current_.clear();
  long id = 0;
  if (!IdOf(parcelId, id)) return current_;
  if (db_ != nullptr && byParcel_.find(id) == byParcel_.end()) {
    store::ForwardCursor rs = db_->OpenForwardCursor(
        "select * FROM tblMeasurements  where ParcelID = " + std::to_string(id) +
        " ORDER BY RowNo");
    const auto positions = ColumnPositions(rs);
    auto& indices = byParcel_[id];
    for (; !rs.Eof(); rs.MoveNext()) {
      indices.push_back(static_cast<std::uint32_t>(rows_.size()));
      rows_.push_back(RowOf(rs, positions));
    }
    rs.Close();
  }
  const auto found = byParcel_.find(id);
  if (found == byParcel_.end()) return current_;
  for (std::uint32_t k : found->second) current_.push_back(&rows_[k]);
  // Rows kept in the order of the file, sorted by RowNo when they are not
  // already, keeping the file's order among equal numbers.
  const auto byRowNo = [](const MeasurementRow* a, const MeasurementRow* b) {
    return a->order < b->order;
  };
  if (!std::is_sorted(current_.begin(), current_.end(), byRowNo)) {
    std::stable_sort(current_.begin(), current_.end(), byRowNo);
  }
  return current_;
}

}  // namespace parvenna::reports
