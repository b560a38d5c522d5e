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

// Positions of the record's columns in a recordset of tblMeasurements; -1
// for a column the file lacks, which then reads as Null.
std::array<int, 7> ColumnPositions(const store::Recordset& rs) {
  std::array<int, 7> positions{};
  for (std::size_t c = 0; c < positions.size(); ++c) {
    positions[c] = -1;
    for (int f = 0; f < rs.FieldCount(); ++f) {
      if (SameName(rs.Field(f).Name, kColumns[c])) positions[c] = f;
    }
  }
  return positions;
}

MeasurementRow RowOf(const store::Recordset& rs, const std::array<int, 7>& positions) {
  MeasurementRow row;
  for (std::size_t c = 0; c < positions.size(); ++c) {
    if (positions[c] >= 0) row.values[c] = rs.Get(positions[c]);
  }
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
  store::Recordset rs = db.OpenRecordset("select * FROM tblParcel  ORDER BY Parcel");
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
  store::Recordset rs = db.OpenRecordset("select * FROM tblMeasurements");
  const auto positions = ColumnPositions(rs);
  const int idPosition = [&] {
    for (int f = 0; f < rs.FieldCount(); ++f) {
      if (SameName(rs.Field(f).Name, "ParcelID")) return f;
    }
    return -1;
  }();
  // Rows in the order of the file, then sorted by RowNo within each parcel,
  // keeping that order among equal numbers.
  struct Keyed {
    double rowNo;
    bool nullRowNo;
    MeasurementRow row;
  };
  std::unordered_map<long, std::vector<Keyed>> keyed;
  for (; !rs.Eof(); rs.MoveNext()) {
    long id = 0;
    if (idPosition < 0 || !IdOf(rs.Get(idPosition), id)) continue;
    MeasurementRow row = RowOf(rs, positions);
    const store::Value& rowNo = row.values[0];
    double number = 0;
    bool isNull = rowNo.IsNull();
    if (!isNull) {
      try {
        number = rowNo.AsDouble();
      } catch (const RunError&) {
        isNull = true;
      }
    }
    keyed[id].push_back({number, isNull, std::move(row)});
  }
  rs.Close();
  for (auto& [id, list] : keyed) {
    // A Null sorts before every number, as in the query.
    std::stable_sort(list.begin(), list.end(), [](const Keyed& a, const Keyed& b) {
      if (a.nullRowNo != b.nullRowNo) return a.nullRowNo;
      return a.rowNo < b.rowNo;
    });
    auto& rows = source.rows_[id];
    rows.reserve(list.size());
    for (Keyed& k : list) rows.push_back(std::move(k.row));
  }
  return source;
}

MeasurementSource MeasurementSource::PerParcel(store::Database& db) {
  return MeasurementSource(&db);
}

const std::vector<MeasurementRow>& MeasurementSource::RowsOf(const store::Value& parcelId) {
  long id = 0;
  if (!IdOf(parcelId, id)) return none_;
  if (db_ != nullptr && rows_.find(id) == rows_.end()) {
    store::Recordset rs = db_->OpenRecordset(
        "select * FROM tblMeasurements  where ParcelID = " + std::to_string(id) +
        " ORDER BY RowNo");
    const auto positions = ColumnPositions(rs);
    auto& rows = rows_[id];
    for (; !rs.Eof(); rs.MoveNext()) rows.push_back(RowOf(rs, positions));
    rs.Close();
  }
  auto found = rows_.find(id);
  return found == rows_.end() ? none_ : found->second;
}

}  // namespace parvenna::reports
