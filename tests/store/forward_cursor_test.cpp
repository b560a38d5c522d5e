#include <gtest/gtest.h>

#include <functional>

#include "store/store.h"
#include "tests/store/temp_dir.h"

namespace parvenna::store {
namespace {

using parvenna::testing::TempDir;

int ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RunError& e) {
    return e.Code();
  }
  return 0;
}

// A table written by hand, as files from elsewhere come: Booleans kept three
// ways, a number kept as text, a text that is no number in a REAL column,
// Nulls, and a text longer than a short string.
Database MakeMixedFile(const TempDir& dir) {
  Database db = Database::Create(dir / "mixed.pvd");
  db.ExecuteScript(
      "CREATE TABLE t (id INTEGER PRIMARY KEY, flag BOOLEAN, n VARCHAR(40), x REAL, k SMALLINT, "
      "loose);"
      "INSERT INTO t (flag, n, x, k, loose) VALUES"
      " (TRUE, 'abc', 2, 7, 'free'),"
      " (-1, 'N45\u00B030''15\"E', '1.5', '12', 3.25),"
      " ('false', NULL, 'abc', NULL, NULL),"
      " (NULL, 'a name longer than any short string', NULL, 2.6, 4);");
  return db;
}

TEST(ForwardCursor, ReadsTheSameFieldsAndRowsAsTheDynaset) {
  TempDir dir;
  Database db = MakeMixedFile(dir);
  for (const char* source : {"t", "SELECT * FROM t", "select * FROM t  ORDER BY n",
                             "SELECT n, x * 2 AS twice FROM t WHERE id > 1",
                             "SELECT DISTINCT flag FROM t"}) {
    SCOPED_TRACE(source);
    Recordset dynaset = db.OpenRecordset(source);
    ForwardCursor cursor = db.OpenForwardCursor(source);
    ASSERT_EQ(cursor.FieldCount(), dynaset.FieldCount());
    for (int f = 0; f < cursor.FieldCount(); ++f) {
      EXPECT_EQ(cursor.Field(f).Name, dynaset.Field(f).Name);
      EXPECT_EQ(cursor.Field(f).Type, dynaset.Field(f).Type);
      EXPECT_EQ(cursor.Field(f).Size, dynaset.Field(f).Size);
    }
    long rows = 0;
    for (; !dynaset.Eof(); dynaset.MoveNext(), cursor.MoveNext(), ++rows) {
      ASSERT_FALSE(cursor.Eof()) << "row " << rows;
      for (int f = 0; f < cursor.FieldCount(); ++f) {
        EXPECT_EQ(cursor.Get(f), dynaset.Get(f)) << "row " << rows << ", " << cursor.Field(f).Name;
        EXPECT_EQ(cursor.Get(cursor.Field(f).Name), cursor.Get(f));
      }
    }
    EXPECT_TRUE(cursor.Eof());
    EXPECT_EQ(rows, dynaset.RecordCount());
  }
}

TEST(ForwardCursor, NamesFieldsWithoutCaseAndRefusesWhatIsNotThere) {
  TempDir dir;
  Database db = MakeMixedFile(dir);
  ForwardCursor cursor = db.OpenForwardCursor("SELECT * FROM t WHERE id = 2");
  EXPECT_TRUE(cursor.HasField("FLAG"));
  EXPECT_FALSE(cursor.HasField("none"));
  EXPECT_EQ(cursor.Get("K"), Value(12));
  EXPECT_EQ(ErrorOf([&] { cursor.Get("none"); }), errors::FieldNotFound);
  EXPECT_EQ(ErrorOf([&] { cursor.Get(6); }), errors::FieldNotFound);
  cursor.MoveNext();
  EXPECT_TRUE(cursor.Eof());
  EXPECT_EQ(ErrorOf([&] { cursor.Get(0); }), errors::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { cursor.MoveNext(); }), errors::NoCurrentRecord);

  EXPECT_TRUE(db.OpenForwardCursor("SELECT * FROM t WHERE id > 10").Eof());
  EXPECT_EQ(ErrorOf([&] { db.OpenForwardCursor("tblNone"); }), errors::NoSuchTable);
  EXPECT_EQ(ErrorOf([&] { db.OpenForwardCursor("SELECT missing FROM t"); }),
            errors::TooFewParameters);
  cursor.Close();
  EXPECT_EQ(ErrorOf([&] { cursor.Eof(); }), errors::SyntaxError);
}

TEST(ForwardCursor, PastItsLastRowItNoLongerHoldsTheFile) {
  TempDir dir;
  MakeMixedFile(dir);
  Database reader = Database::Open(dir / "mixed.pvd");
  ForwardCursor cursor = reader.OpenForwardCursor("t");
  while (!cursor.Eof()) cursor.MoveNext();
  // Another opening writes at once instead of waiting out a reader.
  Database writer = Database::Open(dir / "mixed.pvd");
  writer.Execute("INSERT INTO t (n) VALUES ('later')");
  EXPECT_EQ(writer.OpenRecordset("t").RecordCount(), 5);
}

}  // namespace
}  // namespace parvenna::store
