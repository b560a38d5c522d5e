#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/run_error.h"
#include "store/value.h"

// The relational file store: databases, dynaset recordsets, forward-only
// cursors, table and index creation, over SQLite. No SQLite type shows here; store.cpp alone speaks to
// it. Failures are StoreErrors that carry the number the program's handlers
// test for (3022 a duplicate, 3356 an exclusive open refused, 3265 a field
// that does not exist, ...).
namespace parvenna::store {

namespace errors {
inline constexpr int InvalidUseOfNull = 94;
inline constexpr int UpdateWithoutEdit = 3020;   // a field written outside AddNew or Edit
inline constexpr int NoCurrentRecord = 3021;     // at EOF or BOF, or an empty recordset
inline constexpr int DuplicateKey = 3022;        // a duplicate value in a unique index
inline constexpr int FileNotFound = 3024;
inline constexpr int DiskFull = 3026;            // "Not enough space on disk."
inline constexpr int ReadOnlyRecordset = 3027;
inline constexpr int DiskError = 3043;
inline constexpr int InvalidPath = 3044;         // a path longer than a database's path can be
inline constexpr int CorruptFile = 3049;
inline constexpr int ReadOnlyFile = 3051;
inline constexpr int TooFewParameters = 3061;    // a query names a column that does not exist
inline constexpr int NoSuchTable = 3078;
inline constexpr int SyntaxError = 3075;
inline constexpr int RecordDeleted = 3167;
inline constexpr int FieldTooSmall = 3163;       // a text longer than its field
inline constexpr int FieldNotUpdatable = 3164;   // the store's own row number
inline constexpr int DatabaseExists = 3204;
inline constexpr int Locked = 3218;              // another program holds the file for writing
inline constexpr int FieldNotFound = 3265;       // "Item not found in this collection."
inline constexpr int UnrecognizedFormat = 3343;  // not a database at all
inline constexpr int ExclusiveRefused = 3356;    // opened exclusively by another process
}  // namespace errors

class StoreError : public RunError {
 public:
  StoreError(int number, const std::string& what)
      : RunError(static_cast<ErrorNumber>(number), what) {}
};

struct FieldInfo {
  std::string Name;
  FieldType Type = FieldType::Any;
  int Size = 0;                // characters of a Text field; 0 no limit
  bool AutoIncrement = false;  // written by the store on AddNew
};

// Creation of tables and indexes.
struct FieldDef {
  std::string Name;
  FieldType Type = FieldType::Text;
  int Size = 0;
  bool AutoIncrement = false;
};

struct TableDef {
  std::string Name;
  std::vector<FieldDef> Fields;
};

struct IndexDef {
  std::string Name;
  std::string Table;
  std::vector<std::string> Fields;
  bool Unique = false;
};

// The declared SQLite type written for a field, and the field read back from a
// declared type. Both kinds of names a person writing SQL by hand would use
// are understood: SMALLINT, INTEGER, BOOLEAN, DOUBLE or REAL, TEXT(n) or
// VARCHAR(n), DATETIME.
std::string DeclaredType(const FieldDef& field);
FieldInfo FieldFromDeclaredType(std::string name, std::string_view declaredType);

enum class OpenMode {
  Shared,     // read and write, alongside any other opening
  Exclusive,  // read and write; a second exclusive opening of the file, by
              // any process, is refused with 3356 while this one lives. Shared
              // openings, this process's included, still work.
};

class Recordset;
class ForwardCursor;

class Database {
 public:
  // Opens an existing file. A missing file is 3024, a file that is no
  // database 3343, a path longer than PathLimit() 3044.
  static Database Open(const std::filesystem::path& path, OpenMode mode = OpenMode::Shared);
  // Makes a new, empty database file; an existing file is 3204.
  static Database Create(const std::filesystem::path& path);
  // The longest full path, in bytes, of a file the store can open: shorter
  // than many a file system allows.
  static std::size_t PathLimit();

  Database();
  Database(Database&&) noexcept;
  Database& operator=(Database&&) noexcept;
  ~Database();

  bool IsOpen() const;
  void Close();
  const std::filesystem::path& Path() const;

  // A query that returns no rows: DELETE, UPDATE, INSERT, CREATE.
  void Execute(std::string_view sql);
  // Several statements in one text, as a SQL file holds them.
  void ExecuteScript(std::string_view sql);

  // A dynaset over a table name or a SELECT. Rows of one base table can be
  // edited, added and deleted; DISTINCT and joined queries are read-only.
  Recordset OpenRecordset(std::string_view source);
  // A read-only pass over the same rows, front to back, for readers that
  // neither edit nor move back. Fields and values read as the dynaset's do.
  ForwardCursor OpenForwardCursor(std::string_view source);

  void Append(const TableDef& table);
  void Append(const IndexDef& index);

  std::vector<std::string> TableNames() const;
  // Throws 3078 when the table does not exist. Names compare without case.
  std::vector<FieldInfo> Fields(std::string_view table) const;
  std::vector<IndexDef> Indexes(std::string_view table) const;
  // A walk over every page and index: false for a file damaged or cut short.
  bool IsIntact() const;
  // Whether a change could be written here: a write is begun and rolled back,
  // so the file and its folder are asked as a save would ask them. False for
  // a read-only file or folder; a file that another program is writing is not
  // read-only and answers true.
  bool AcceptsWrites();

  struct Connection;

 private:
  friend class Transaction;
  explicit Database(std::shared_ptr<Connection> connection);
  Connection& Live() const;
  std::vector<FieldInfo> TableFieldsOf(std::string_view source, std::string_view table) const;
  std::shared_ptr<Connection> connection_;
};

// A write transaction on one opening: what is written through the database
// and its recordsets from the start until Commit becomes part of the file all
// at once, or, when Commit is not reached or fails, not at all. A process
// that dies inside it leaves the file as it was before it began.
class Transaction {
 public:
  explicit Transaction(Database& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();  // rolls back what was not committed
  void Commit();

 private:
  Database& database_;
  bool open_ = true;
};

// A dynaset: the rows of the source as they were when it opened, plus those
// added through it. Moves walk that list; AddNew, Edit and Update write
// through at once, each Update its own committed change unless a Transaction
// of the same opening holds it.
class Recordset {
 public:
  Recordset();
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;
  ~Recordset();

  bool Eof() const;
  bool Bof() const;
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  // The rows not deleted; all of them, not only those visited.
  long RecordCount() const;

  void AddNew();
  void Edit();
  void Update();  // writes the row; 3022 on a duplicate, and then nothing is written
  void CancelUpdate();
  void Delete();  // the current row; the position stays on the gap until a move

  // The key (SQLite row id) of the row that the last Update wrote, and a move
  // to a row by its key.
  std::int64_t LastModified() const;
  void Bookmark(std::int64_t key);

  int FieldCount() const;
  const FieldInfo& Field(int position) const;
  bool HasField(std::string_view name) const;

  // Field access by name without regard to case (3265 when there is none) or
  // by position from 0 (3265 outside the range). Reading needs a current row,
  // writing an AddNew or Edit.
  Value Get(std::string_view name) const;
  Value Get(int position) const;
  void Set(std::string_view name, const Value& value);
  void Set(int position, const Value& value);

  void Close();

  struct State;

 private:
  friend class Database;
  explicit Recordset(std::unique_ptr<State> state);
  int PositionOf(std::string_view name) const;
  std::unique_ptr<State> state_;
};

// A forward-only, read-only cursor: each row is read from the file when the
// cursor steps onto it, and none is kept once it has moved on. It holds a
// read of the file from its opening until it passes the last row or closes.
class ForwardCursor {
 public:
  ForwardCursor();
  ForwardCursor(ForwardCursor&&) noexcept;
  ForwardCursor& operator=(ForwardCursor&&) noexcept;
  ~ForwardCursor();

  bool Eof() const;
  void MoveNext();  // 3021 at EOF

  int FieldCount() const;
  const FieldInfo& Field(int position) const;
  bool HasField(std::string_view name) const;

  // The current row's field by name without regard to case, or by position
  // from 0; 3265 for a field that does not exist, 3021 at EOF.
  Value Get(std::string_view name) const;
  Value Get(int position) const;

  void Close();

  struct State;

 private:
  friend class Database;
  explicit ForwardCursor(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

// Quotes a name for SQL: "name", with inner quotes doubled.
std::string QuoteName(std::string_view name);

}  // namespace parvenna::store
