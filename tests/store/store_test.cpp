#include "store/store.h"

#include <gtest/gtest.h>

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

// One table of every logical type, made through the store's own creation.
Database MakeTypedTable(const TempDir& dir) {
  Database db = Database::Create(dir / "typed.pvd");
  db.Append(TableDef{"tblTyped",
                     {{"ID", FieldType::Long, 0, true},
                      {"Small", FieldType::Integer},
                      {"Big", FieldType::Long},
                      {"Real", FieldType::Double},
                      {"Flag", FieldType::Boolean},
                      {"Name", FieldType::Text, 3},
                      {"Note", FieldType::Text}}});
  db.Append(IndexDef{"NameIndex", "tblTyped", {"Name"}, true});
  return db;
}

struct WriteCase {
  const char* field;
  Value written;
  int error;      // 0 when the write is taken
  Value readBack;
};

void PrintTo(const WriteCase& c, std::ostream* os) {
  *os << c.field << " <- " << c.written.AsText().substr(0, 12);
}

class FieldWrite : public ::testing::TestWithParam<WriteCase> {};

TEST_P(FieldWrite, KeepsTheLogicalTypeOfItsField) {
  TempDir dir;
  Database db = MakeTypedTable(dir);
  Recordset rs = db.OpenRecordset("tblTyped");
  rs.AddNew();
  const WriteCase& c = GetParam();
  EXPECT_EQ(ErrorOf([&] { rs.Set(c.field, c.written); }), c.error);
  if (c.error != 0) return;
  rs.Update();
  Recordset again = Database::Open(dir / "typed.pvd").OpenRecordset("SELECT * FROM tblTyped");
  EXPECT_EQ(again.Get(c.field), c.readBack);
}

INSTANTIATE_TEST_SUITE_P(
    Types, FieldWrite,
    ::testing::Values(
        WriteCase{"Small", 32767, 0, 32767}, WriteCase{"Small", -32768, 0, -32768},
        WriteCase{"Small", 32768, 6, {}}, WriteCase{"Small", "12", 0, 12},
        WriteCase{"Small", 2.5, 0, 2},  // ties to even, as the integers of the forms round
        WriteCase{"Small", "abc", 13, {}}, WriteCase{"Big", 2147483647, 0, 2147483647},
        WriteCase{"Big", 2147483648.0, 6, {}}, WriteCase{"Real", "0.01", 0, 0.01},
        WriteCase{"Flag", true, 0, true}, WriteCase{"Flag", 0, 0, false},
        WriteCase{"Name", "abc", 0, "abc"},
        WriteCase{"Name", "\u00B0\u00B0\u00B0", 0, "\u00B0\u00B0\u00B0"},  // characters, not bytes
        WriteCase{"Name", "abcd", 3163, {}}, WriteCase{"Note", std::string(300, 'x'), 0,
                                                       std::string(300, 'x')},
        WriteCase{"ID", 5, 3164, {}}));

TEST(Recordset, WalksAddsEditsAndDeletesRows) {
  TempDir dir;
  Database db = MakeTypedTable(dir);
  Recordset rs = db.OpenRecordset("tblTyped");
  EXPECT_TRUE(rs.Eof());
  EXPECT_TRUE(rs.Bof());
  EXPECT_EQ(ErrorOf([&] { rs.MoveFirst(); }), errors::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { rs.Get("Name"); }), errors::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { rs.Set("Name", "x"); }), errors::UpdateWithoutEdit);

  std::vector<std::int64_t> keys;
  for (const char* name : {"a", "b", "c"}) {
    rs.AddNew();
    rs.Set("name", name);  // names compare without case
    rs.Update();
    keys.push_back(rs.LastModified());
  }
  EXPECT_EQ(rs.RecordCount(), 3);
  rs.Bookmark(keys[1]);
  EXPECT_EQ(rs.Get("ID").AsLong(), keys[1]);  // the store filled the key
  rs.Edit();
  rs.Set("Note", "edited");
  rs.Update();
  rs.Delete();
  EXPECT_EQ(ErrorOf([&] { rs.Get(0); }), errors::RecordDeleted);
  rs.MoveNext();
  EXPECT_EQ(rs.Get("Name").AsText(), "c");
  rs.MoveNext();
  EXPECT_TRUE(rs.Eof());
  EXPECT_EQ(ErrorOf([&] { rs.MoveNext(); }), errors::NoCurrentRecord);
  EXPECT_EQ(rs.RecordCount(), 2);

  Recordset fresh = db.OpenRecordset("SELECT * FROM tblTyped ORDER BY ID DESC");
  EXPECT_EQ(fresh.Get(5).AsText(), "c");
  fresh.MoveLast();
  EXPECT_EQ(fresh.Get("Name").AsText(), "a");
  EXPECT_EQ(ErrorOf([&] { fresh.Get("Missing"); }), errors::FieldNotFound);
  EXPECT_EQ(ErrorOf([&] { fresh.Get(7); }), errors::FieldNotFound);
  fresh.Edit();
  EXPECT_EQ(ErrorOf([&] { fresh.Set("FroeColor", 1); }), errors::FieldNotFound);
}

TEST(Recordset, DuplicateInAUniqueIndexIsRefusedAndNothingIsWritten) {
  TempDir dir;
  Database db = MakeTypedTable(dir);
  Recordset rs = db.OpenRecordset("tblTyped");
  rs.AddNew();
  rs.Set("Name", "lot");
  rs.Update();
  rs.AddNew();
  rs.Set("Name", "lot");
  rs.Set("Note", "second");
  EXPECT_EQ(ErrorOf([&] { rs.Update(); }), errors::DuplicateKey);
  EXPECT_EQ(db.OpenRecordset("tblTyped").RecordCount(), 1);
}

TEST(Transaction, WritesEverythingAtTheCommitOrNothing) {
  TempDir dir;
  const auto path = dir / "t.pvd";
  {
    Database db = Database::Create(path);
    db.Append(TableDef{"t", {{"id", FieldType::Long, 0, true}, {"name", FieldType::Text, 5}}});
    db.Append(IndexDef{"byName", "t", {"name"}, true});
  }
  auto count = [&] { return Database::Open(path).OpenRecordset("t").RecordCount(); };
  {
    Database db = Database::Open(path);
    Transaction transaction(db);
    Recordset rs = db.OpenRecordset("t");
    for (const char* name : {"a", "b"}) {
      rs.AddNew();
      rs.Set("name", name);
      rs.Update();
    }
    EXPECT_EQ(db.OpenRecordset("t").RecordCount(), 2) << "its own opening sees its writes";
    EXPECT_EQ(count(), 0) << "no other opening sees them before the commit";
  }
  EXPECT_EQ(count(), 0) << "the end without a commit rolls everything back";
  {
    Database db = Database::Open(path);
    Transaction transaction(db);
    db.Execute("INSERT INTO t (name) VALUES ('a')");
    // A refused write inside it leaves the rest to the caller's choice.
    EXPECT_THROW(db.Execute("INSERT INTO t (name) VALUES ('a')"), StoreError);
    db.Execute("INSERT INTO t (name) VALUES ('b')");
    transaction.Commit();
  }
  EXPECT_EQ(count(), 2);
}

TEST(Recordset, QueriesThatCannotBeWrittenBackAreReadOnly) {
  TempDir dir;
  Database db = MakeTypedTable(dir);
  db.Execute("INSERT INTO tblTyped (Name) VALUES ('a'), ('b')");
  Recordset distinct = db.OpenRecordset("SELECT DISTINCT Name FROM tblTyped");
  EXPECT_EQ(distinct.RecordCount(), 2);
  EXPECT_EQ(ErrorOf([&] { distinct.Edit(); }), errors::ReadOnlyRecordset);
  db.Execute("DELETE * FROM tblTyped WHERE Name = 'a'");
  EXPECT_EQ(db.OpenRecordset("tblTyped").RecordCount(), 1);
  EXPECT_EQ(ErrorOf([&] { db.Execute("DELETE FROM tblNone"); }), errors::NoSuchTable);
  EXPECT_EQ(ErrorOf([&] { db.OpenRecordset("tblNone"); }), errors::NoSuchTable);
}

struct DeclaredCase {
  const char* declared;
  FieldType type;
  int size;
};

TEST(DeclaredTypes, ReadAsAPersonWritingSqlByHandMeansThem) {
  const DeclaredCase cases[] = {
      {"SMALLINT", FieldType::Integer, 0},   {"INTEGER", FieldType::Long, 0},
      {"INT", FieldType::Long, 0},           {"BOOLEAN", FieldType::Boolean, 0},
      {"BIT", FieldType::Boolean, 0},        {"DOUBLE", FieldType::Double, 0},
      {"REAL", FieldType::Double, 0},        {"FLOAT", FieldType::Double, 0},
      {"TEXT(255)", FieldType::Text, 255},   {"VARCHAR(50)", FieldType::Text, 50},
      {"text (3)", FieldType::Text, 3},      {"TEXT", FieldType::Text, 0},
      {"DATETIME", FieldType::DateTime, 0},  {"", FieldType::Any, 0},
  };
  for (const DeclaredCase& c : cases) {
    FieldInfo field = FieldFromDeclaredType("f", c.declared);
    EXPECT_EQ(field.Type, c.type) << c.declared;
    EXPECT_EQ(field.Size, c.size) << c.declared;
    if (c.type != FieldType::Any) {
      FieldInfo back = FieldFromDeclaredType("f", DeclaredType({"f", c.type, c.size}));
      EXPECT_EQ(back.Type, c.type) << c.declared;
    }
  }
}

TEST(DeclaredTypes, AFileWrittenElsewhereReadsWithItsTypes) {
  TempDir dir;
  {
    Database db = Database::Create(dir / "other.db");
    db.ExecuteScript(
        "CREATE TABLE t (id INTEGER PRIMARY KEY, flag BOOLEAN, n VARCHAR(5), x REAL);"
        "INSERT INTO t (flag, n, x) VALUES (TRUE, 'abc', 2), (-1, 'de', '1.5'), ('false', '', 0);");
  }
  Database db = Database::Open(dir / "other.db");
  std::vector<FieldInfo> fields = db.Fields("T");
  EXPECT_TRUE(fields[0].AutoIncrement);
  Recordset rs = db.OpenRecordset("t");
  EXPECT_EQ(rs.Get("flag"), Value(true));
  EXPECT_EQ(rs.Get("x"), Value(2.0));
  rs.MoveNext();
  EXPECT_EQ(rs.Get("flag"), Value(true));
  EXPECT_EQ(rs.Get("x"), Value(1.5));
  rs.MoveNext();
  EXPECT_EQ(rs.Get("flag"), Value(false));
  rs.Edit();
  EXPECT_EQ(ErrorOf([&] { rs.Set("n", "abcdef"); }), errors::FieldTooSmall);
}

TEST(Database, OpeningTellsMissingFilesAndFilesThatAreNoDatabase) {
  TempDir dir;
  EXPECT_EQ(ErrorOf([&] { Database::Open(dir / "none.pvd"); }), errors::FileNotFound);
  parvenna::testing::WriteFile(dir / "noise.pvd", std::string(5000, '\x5a'));
  EXPECT_EQ(ErrorOf([&] { Database::Open(dir / "noise.pvd"); }), errors::UnrecognizedFormat);
  Database::Create(dir / "made.pvd").Append(TableDef{"t", {{"a", FieldType::Long}}});
  EXPECT_EQ(ErrorOf([&] { Database::Create(dir / "made.pvd"); }), errors::DatabaseExists);
}

TEST(Database, AnExclusiveOpeningRefusesOnlyAnotherExclusiveOne) {
  TempDir dir;
  Database::Create(dir / "s.pvs").Append(TableDef{"t", {{"a", FieldType::Long}}});
  Database held = Database::Open(dir / "s.pvs", OpenMode::Exclusive);
  EXPECT_EQ(ErrorOf([&] { Database::Open(dir / "s.pvs", OpenMode::Exclusive); }),
            errors::ExclusiveRefused);
  // The short openings of the holder's own process, and their closing, leave
  // the hold in place.
  for (int i = 0; i < 3; ++i) {
    Database brief = Database::Open(dir / "s.pvs");
    brief.Execute("INSERT INTO t VALUES (1)");
  }
  EXPECT_EQ(ErrorOf([&] { Database::Open(dir / "s.pvs", OpenMode::Exclusive); }),
            errors::ExclusiveRefused);
  held.Close();
  EXPECT_NO_THROW(Database::Open(dir / "s.pvs", OpenMode::Exclusive));
}

}  // namespace
}  // namespace parvenna::store
