#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "store/store.h"

// A project filled to the last free bytes of one of its tables, so that the
// next write of a save needs a page that a disk held to the file's size does
// not give.
namespace parvenna::testing {

inline std::uintmax_t SizeOf(const std::string& path) { return std::filesystem::file_size(path); }

// Runs `add` on the file until one run of `trial` on a copy of it makes the
// copy grow: the next write of that kind then needs a page the disk does not
// have.
inline void FillUntilTheNextGrows(const std::string& path,
                                  const std::function<void(store::Database&)>& add,
                                  const std::function<void(store::Database&)>& trial) {
  const std::string scratch = path + ".trial";
  for (int round = 0; round < 200; ++round) {
    std::filesystem::copy_file(path, scratch, std::filesystem::copy_options::overwrite_existing);
    {
      store::Database db = store::Database::Open(scratch);
      trial(db);
    }
    const bool grows = SizeOf(scratch) > SizeOf(path);
    std::filesystem::remove(scratch);
    if (grows) return;
    store::Database db = store::Database::Open(path);
    add(db);
  }
  FAIL() << "the file never filled";
}

// Rows of a table filled to its last free bytes: first with long rows while
// one more would fit, then with short ones until the next write of the save
// (`trial`) would not. The long texts are filler that no routine reads.
inline void FillTable(const std::string& path,
                      const std::function<void(store::Database&, const std::string& text)>& add,
                      const std::function<void(store::Database&)>& trial) {
  int n = 0;
  auto text = [&n](std::size_t length) {
    std::string t = "Filler " + std::to_string(++n);
    return t + std::string(length - t.size(), '.');
  };
  FillUntilTheNextGrows(
      path, [&](store::Database& db) { add(db, text(400)); },
      [&](store::Database& db) { add(db, text(400)); });
  FillUntilTheNextGrows(path, [&](store::Database& db) { add(db, text(40)); }, trial);
}

inline void AddParcelRow(store::Database& db, const std::string& name, const std::string& bearing) {
  db.Execute("INSERT INTO tblParcel (Parcel, Closure, Area, ClosureBearing, PrecisionRatio) "
             "VALUES ('" + name + "', 0.01, 10000, '" + bearing + "', 0.0001)");
}

inline void AddCourseRow(store::Database& db, long parcelId, const std::string& direction) {
  db.Execute("INSERT INTO tblMeasurements (ParcelID, RowNo, RowType, Length, Direction) VALUES (" +
             std::to_string(parcelId) + ", 0, 1, 123.456, '" + direction + "')");
}

}  // namespace parvenna::testing
