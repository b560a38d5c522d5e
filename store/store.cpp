#include "store/store.h"

#include <sqlite3.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <optional>
#include <system_error>

namespace parvenna::store {

namespace {

std::string Upper(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

bool SameName(std::string_view a, std::string_view b) { return Upper(a) == Upper(b); }

bool Contains(const std::string& haystack, std::string_view needle) {
  return haystack.find(needle) != std::string::npos;
}

// How long a short opening waits for another program's write to finish
// before it reports the file locked.
constexpr int kBusyWaitMs = 3000;

// What the system said when a write or an opening failed underneath SQLite:
// a disk with no room, or a file or folder that may not be written, each have
// their own number; anything else is a failure of the disk. SQLite keeps the
// system's error of the connection, or else of the file's last failed call.
int SystemFailure(sqlite3* db, int otherwise) {
  int error = db ? sqlite3_system_errno(db) : 0;
  if (error == 0 && db) sqlite3_file_control(db, "main", SQLITE_FCNTL_LAST_ERRNO, &error);
  switch (error) {
    case ENOSPC:
    case EFBIG:
    case EDQUOT:
      return errors::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
      return errors::ReadOnlyFile;
    default:
      return otherwise;
  }
}

[[noreturn]] void Fail(sqlite3* db, int rc, std::string_view context) {
  std::string message = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
  std::string what = std::string(context) + ": " + message;
  int extended = db ? sqlite3_extended_errcode(db) : rc;
  switch (rc & 0xFF) {
    case SQLITE_FULL:
      throw StoreError(errors::DiskFull, "Not enough space on disk. (" + what + ")");
    case SQLITE_IOERR:
      throw StoreError(SystemFailure(db, errors::DiskError), what);
    case SQLITE_CONSTRAINT:
      if (extended == SQLITE_CONSTRAINT_UNIQUE || extended == SQLITE_CONSTRAINT_PRIMARYKEY) {
        throw StoreError(errors::DuplicateKey,
                         "The changes you requested to the table were not successful because "
                         "they would create duplicate values in the index. (" + message + ")");
      }
      throw StoreError(errors::SyntaxError, what);
    case SQLITE_NOTADB:
      throw StoreError(errors::UnrecognizedFormat, "Unrecognized database format: " + what);
    case SQLITE_CORRUPT:
      throw StoreError(errors::CorruptFile, what);
    case SQLITE_CANTOPEN:
      // A journal that cannot be made beside the file is a folder that may
      // not be written; a file that cannot be opened at all is not there.
      throw StoreError(SystemFailure(db, errors::FileNotFound), what);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      throw StoreError(errors::Locked, what);
    case SQLITE_READONLY:
    case SQLITE_PERM:
      throw StoreError(errors::ReadOnlyFile, what);
    case SQLITE_ERROR:
      if (message.starts_with("no such table")) throw StoreError(errors::NoSuchTable, what);
      if (message.starts_with("no such column")) throw StoreError(errors::TooFewParameters, what);
      throw StoreError(errors::SyntaxError, what);
    default:
      throw StoreError(errors::DiskError, what);
  }
}

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

Statement Prepare(sqlite3* db, std::string_view sql) {
  sqlite3_stmt* raw = nullptr;
  int rc = sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &raw, nullptr);
  Statement statement(raw);
  if (rc != SQLITE_OK) Fail(db, rc, sql);
  return statement;
}

// One step; true while a row is there.
bool Step(sqlite3* db, sqlite3_stmt* statement) {
  int rc = sqlite3_step(statement);
  if (rc == SQLITE_ROW) return true;
  if (rc == SQLITE_DONE) return false;
  Fail(db, rc, sqlite3_sql(statement));
}

void Bind(sqlite3* db, sqlite3_stmt* statement, int index, const Value& value) {
  int rc = SQLITE_OK;
  if (value.IsNull()) {
    rc = sqlite3_bind_null(statement, index);
  } else if (value.IsBool()) {
    rc = sqlite3_bind_int(statement, index, value.AsBool() ? 1 : 0);
  } else if (value.IsWhole()) {
    rc = sqlite3_bind_int64(statement, index, static_cast<sqlite3_int64>(value.AsDouble()));
  } else if (value.IsDouble()) {
    rc = sqlite3_bind_double(statement, index, value.AsDouble());
  } else {
    std::string text = value.AsText();
    rc = sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()),
                           SQLITE_TRANSIENT);
  }
  if (rc != SQLITE_OK) Fail(db, rc, "bind");
}

Value Column(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return Value(static_cast<std::int64_t>(sqlite3_column_int64(statement, column)));
    case SQLITE_FLOAT:
      return Value(sqlite3_column_double(statement, column));
    case SQLITE_NULL:
      return Value();
    default: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      int bytes = sqlite3_column_bytes(statement, column);
      return Value(std::string(text ? text : "", static_cast<std::size_t>(bytes)));
    }
  }
}

// A value as the field's type gives it back. What a file written elsewhere
// holds in a field of ours is taken as well as it can be: a Boolean kept as
// 1, -1 or 'true', a number kept as text.
Value FromStorage(const FieldInfo& field, Value raw) {
  if (raw.IsNull()) return raw;
  try {
    switch (field.Type) {
      case FieldType::Boolean:
        return Value(raw.AsBool());
      case FieldType::Integer:
      case FieldType::Long:
        if (raw.IsWhole()) return raw;
        return Value(static_cast<std::int64_t>(raw.AsDouble()));
      case FieldType::Double:
        return Value(raw.AsDouble());
      case FieldType::Text:
      case FieldType::DateTime:
        if (raw.IsText()) return raw;
        return Value(raw.AsText());
      case FieldType::Any:
        return raw;
    }
  } catch (const RunError&) {
    // A value that does not read as its type is handed over as it is.
  }
  return raw;
}

// The words of a query, enough to find its one base table.
struct QueryShape {
  std::string table;
  bool updatable = false;
};

std::vector<std::string> Words(std::string_view sql) {
  std::vector<std::string> words;
  std::size_t i = 0;
  while (i < sql.size()) {
    char c = sql[i];
    if (std::isspace(static_cast<unsigned char>(c))) {
      ++i;
    } else if (c == '\'' || c == '"' || c == '[' || c == '`') {
      char close = c == '[' ? ']' : c;
      std::size_t end = sql.find(close, i + 1);
      if (end == std::string_view::npos) end = sql.size() - 1;
      words.emplace_back(sql.substr(i, end - i + 1));
      i = end + 1;
    } else if (std::isalnum(static_cast<unsigned char>(c)) || c == '_') {
      std::size_t end = i;
      while (end < sql.size() &&
             (std::isalnum(static_cast<unsigned char>(sql[end])) || sql[end] == '_')) {
        ++end;
      }
      words.emplace_back(sql.substr(i, end - i));
      i = end;
    } else {
      words.emplace_back(1, c);
      ++i;
    }
  }
  return words;
}

std::string Unquote(std::string word) {
  if (word.size() >= 2 && (word.front() == '"' || word.front() == '[' || word.front() == '`')) {
    return word.substr(1, word.size() - 2);
  }
  return word;
}

QueryShape ShapeOf(std::string_view sql) {
  QueryShape shape;
  std::vector<std::string> words = Words(sql);
  auto from = std::find_if(words.begin(), words.end(),
                           [](const std::string& w) { return SameName(w, "FROM"); });
  if (from == words.end() || from + 1 == words.end()) return shape;
  shape.table = Unquote(*(from + 1));
  shape.updatable = words.size() > 1 && !SameName(words[1], "DISTINCT");
  for (auto w = from + 2; w != words.end(); ++w) {
    if (SameName(*w, "JOIN") || SameName(*w, "UNION") || SameName(*w, "GROUP") || *w == ",") {
      shape.updatable = false;
    }
  }
  return shape;
}

bool IsSelect(std::string_view source) {
  std::vector<std::string> words = Words(source);
  return !words.empty() && SameName(words[0], "SELECT");
}

int TextSizeOf(std::string_view declared) {
  auto open = declared.find('(');
  if (open == std::string_view::npos) return 0;
  int size = 0;
  for (std::size_t i = open + 1; i < declared.size(); ++i) {
    char c = declared[i];
    if (std::isdigit(static_cast<unsigned char>(c))) {
      size = size * 10 + (c - '0');
      if (size > 1'000'000'000) return 0;
    } else if (c != ' ') {
      break;
    }
  }
  return size;
}

// The exclusive opening's hold on the file, kept apart from SQLite's own
// locks so that this process's short openings neither meet nor release it,
// while a second process, or a second exclusive opening here, finds it taken.
class ExclusiveHold {
 public:
  ExclusiveHold() = default;
  ExclusiveHold(const ExclusiveHold&) = delete;
  ExclusiveHold& operator=(const ExclusiveHold&) = delete;
  ~ExclusiveHold() { Release(); }

#ifdef _WIN32
  // A byte range far behind any end of file that SQLite reads or locks;
  // Windows ranges are mandatory, so none of the store's own reads meets it.
  static constexpr DWORD kRangeHigh = 0x7FFFFFFF;

  void Take(const std::filesystem::path& path) {
    HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
      throw StoreError(errors::FileNotFound, "Could not find file '" + path.string() + "'.");
    }
    OVERLAPPED at{};
    at.OffsetHigh = kRangeHigh;
    if (!::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &at)) {
      const DWORD error = ::GetLastError();
      ::CloseHandle(file);
      if (error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING) {
        throw StoreError(errors::ExclusiveRefused,
                         "The file '" + path.string() + "' is already opened exclusively.");
      }
      throw StoreError(errors::DiskError, std::system_category().message(static_cast<int>(error)));
    }
    handle_ = file;
  }
  void Release() {
    if (handle_ == INVALID_HANDLE_VALUE) return;
    ::CloseHandle(handle_);  // closing gives the range back
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
#else
  // A whole-file flock belongs to its own open file description: SQLite's
  // record locks on the same file, and the descriptors it opens and closes,
  // do not touch it.
  void Take(const std::filesystem::path& path) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throw StoreError(errors::FileNotFound, "Could not find file '" + path.string() + "'.");
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
      int error = errno;
      ::close(fd);
      if (error == EWOULDBLOCK) {
        throw StoreError(errors::ExclusiveRefused,
                         "The file '" + path.string() + "' is already opened exclusively.");
      }
      throw StoreError(errors::DiskError, std::system_category().message(error));
    }
    fd_ = fd;
  }
  void Release() {
    if (fd_ < 0) return;
    ::close(fd_);
    fd_ = -1;
  }

 private:
  int fd_ = -1;
#endif
};

// SQLite takes file names in UTF-8 on every platform.
std::string Utf8Name(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return std::string(name.begin(), name.end());
}

}  // namespace

struct Database::Connection {
  sqlite3* db = nullptr;
  std::filesystem::path path;
  ExclusiveHold hold;  // taken by an exclusive opening only

  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() {
    if (db) sqlite3_close_v2(db);
  }
};

struct Recordset::State {
  std::shared_ptr<Database::Connection> connection;
  std::string table;  // the base table; empty for a read-only recordset
  std::vector<FieldInfo> fields;
  struct Row {
    std::int64_t key = 0;
    std::vector<Value> values;
    bool deleted = false;
  };
  std::vector<Row> rows;
  long position = 0;  // -1 before the first row (BOF), rows.size() behind the last (EOF)
  enum class Mode { None, Edit, AddNew } mode = Mode::None;
  std::vector<Value> buffer;
  std::vector<bool> dirty;
  long positionBeforeAdd = 0;
  std::optional<std::int64_t> lastModified;

  sqlite3* Db() const { return connection->db; }
  bool OnRow() const {
    return position >= 0 && position < static_cast<long>(rows.size());
  }
};

std::string QuoteName(std::string_view name) {
  std::string out = "\"";
  for (char c : name) {
    out += c;
    if (c == '"') out += '"';
  }
  return out + "\"";
}

std::string DeclaredType(const FieldDef& field) {
  switch (field.Type) {
    case FieldType::Boolean:
      return "BOOLEAN";
    case FieldType::Integer:
      return "SMALLINT";
    case FieldType::Long:
      return "INTEGER";
    case FieldType::Double:
      return "DOUBLE";
    case FieldType::Text:
      return field.Size > 0 ? "TEXT(" + std::to_string(field.Size) + ")" : "TEXT";
    case FieldType::DateTime:
      return "DATETIME";
    case FieldType::Any:
      return "";
  }
  return "";
}

FieldInfo FieldFromDeclaredType(std::string name, std::string_view declaredType) {
  FieldInfo field;
  field.Name = std::move(name);
  std::string type = Upper(declaredType);
  auto has = [&](std::string_view part) { return Contains(type, part); };
  if (has("BOOL") || has("BIT") || has("YESNO") || has("LOGICAL")) {
    field.Type = FieldType::Boolean;
  } else if (has("SMALLINT") || has("INT2") || has("TINYINT") || has("SHORT")) {
    field.Type = FieldType::Integer;
  } else if (has("INT") || has("LONG") || has("COUNTER")) {
    field.Type = FieldType::Long;
  } else if (has("CHAR") || has("TEXT") || has("CLOB") || has("STRING") || has("MEMO")) {
    field.Type = FieldType::Text;
    field.Size = TextSizeOf(type);
  } else if (has("DATE") || has("TIME")) {
    field.Type = FieldType::DateTime;
  } else if (has("REAL") || has("FLOA") || has("DOUB") || has("NUMERIC") || has("DECIMAL") ||
             has("CURRENCY")) {
    field.Type = FieldType::Double;
  }
  return field;
}

// ---------------------------------------------------------------- Database

Database::Database() = default;
Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

std::size_t Database::PathLimit() {
  // The journal beside the file takes the file's path and "-journal": both
  // must fit in the longest path SQLite opens.
  const sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
  return vfs ? static_cast<std::size_t>(vfs->mxPathname) - std::string_view("-journal").size() : 0;
}

namespace {
void CheckPathLength(const std::filesystem::path& path) {
  std::error_code ec;
  const std::filesystem::path whole = std::filesystem::absolute(path, ec);
  if (!ec && whole.native().size() > Database::PathLimit()) {
    throw StoreError(errors::InvalidPath, "'" + path.string() + "' is longer than a path can be.");
  }
}
}  // namespace

Database Database::Open(const std::filesystem::path& path, OpenMode mode) {
  CheckPathLength(path);
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    throw StoreError(errors::FileNotFound, "Could not find file '" + path.string() + "'.");
  }
  auto connection = std::make_shared<Connection>();
  connection->path = path;
  if (mode == OpenMode::Exclusive) connection->hold.Take(path);
  int rc = sqlite3_open_v2(Utf8Name(path).c_str(), &connection->db, SQLITE_OPEN_READWRITE, nullptr);
  if (rc != SQLITE_OK) Fail(connection->db, rc, path.string());
  sqlite3_busy_timeout(connection->db, kBusyWaitMs);
  // The first read of the schema tells a database from any other file.
  Statement probe = Prepare(connection->db, "SELECT count(*) FROM sqlite_master");
  Step(connection->db, probe.get());
  return Database(std::move(connection));
}

Database Database::Create(const std::filesystem::path& path) {
  CheckPathLength(path);
  std::error_code ec;
  if (std::filesystem::exists(path, ec)) {
    throw StoreError(errors::DatabaseExists, "Database '" + path.string() + "' already exists.");
  }
  auto connection = std::make_shared<Connection>();
  connection->path = path;
  int rc = sqlite3_open_v2(Utf8Name(path).c_str(), &connection->db,
                           SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  if (rc != SQLITE_OK) Fail(connection->db, rc, path.string());
  sqlite3_busy_timeout(connection->db, kBusyWaitMs);
  Database database(std::move(connection));
  // Text is UTF-8, compared by code point: a Western single-byte collation
  // reads the same for every name a surveyor types.
  database.Execute("PRAGMA encoding = 'UTF-8'");
  return database;
}

Database::Connection& Database::Live() const {
  if (!connection_) throw StoreError(errors::SyntaxError, "Object invalid or no longer set.");
  return *connection_;
}

bool Database::IsOpen() const { return connection_ != nullptr; }
void Database::Close() { connection_.reset(); }

const std::filesystem::path& Database::Path() const { return Live().path; }

void Database::Execute(std::string_view sql) {
  sqlite3* db = Live().db;
  std::string text(sql);
  // "DELETE * FROM t": the older form of a delete query, which the parcel
  // routines still write.
  std::vector<std::string> words = Words(text);
  if (words.size() > 2 && SameName(words[0], "DELETE") && words[1] == "*") {
    text.erase(text.find('*'), 1);
  }
  Statement statement = Prepare(db, text);
  while (Step(db, statement.get())) {
  }
}

void Database::ExecuteScript(std::string_view sql) {
  sqlite3* db = Live().db;
  std::string text(sql);
  char* error = nullptr;
  int rc = sqlite3_exec(db, text.c_str(), nullptr, nullptr, &error);
  sqlite3_free(error);
  if (rc != SQLITE_OK) Fail(db, rc, "script");
}

void Database::Append(const TableDef& table) {
  std::string sql = "CREATE TABLE " + QuoteName(table.Name) + " (";
  for (std::size_t i = 0; i < table.Fields.size(); ++i) {
    const FieldDef& field = table.Fields[i];
    if (i > 0) sql += ", ";
    sql += QuoteName(field.Name) + " ";
    // SQLite numbers rows by itself; an INTEGER PRIMARY KEY is that row
    // number under a name, no index of its own, and AUTOINCREMENT keeps it
    // from ever being given again after a delete.
    sql += field.AutoIncrement ? "INTEGER PRIMARY KEY AUTOINCREMENT" : DeclaredType(field);
  }
  Execute(sql + ")");
}

void Database::Append(const IndexDef& index) {
  std::string sql = std::string("CREATE ") + (index.Unique ? "UNIQUE " : "") + "INDEX " +
                    QuoteName(index.Name) + " ON " + QuoteName(index.Table) + " (";
  for (std::size_t i = 0; i < index.Fields.size(); ++i) {
    if (i > 0) sql += ", ";
    sql += QuoteName(index.Fields[i]);
  }
  Execute(sql + ")");
}

std::vector<std::string> Database::TableNames() const {
  sqlite3* db = Live().db;
  Statement statement = Prepare(
      db, "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' "
          "ESCAPE '\\' ORDER BY rowid");
  std::vector<std::string> names;
  while (Step(db, statement.get())) names.push_back(Column(statement.get(), 0).AsText());
  return names;
}

std::vector<FieldInfo> Database::Fields(std::string_view table) const {
  sqlite3* db = Live().db;
  Statement statement = Prepare(db, "PRAGMA table_info(" + QuoteName(table) + ")");
  std::vector<FieldInfo> fields;
  std::vector<int> keyParts;
  std::vector<std::string> types;
  while (Step(db, statement.get())) {
    std::string name = Column(statement.get(), 1).AsText();
    std::string type = Column(statement.get(), 2).AsText();
    fields.push_back(FieldFromDeclaredType(name, type));
    types.push_back(Upper(type));
    if (sqlite3_column_int(statement.get(), 5) > 0) keyParts.push_back(static_cast<int>(fields.size() - 1));
  }
  if (fields.empty()) {
    throw StoreError(errors::NoSuchTable,
                     "The database engine cannot find the input table '" + std::string(table) + "'.");
  }
  // A lone INTEGER PRIMARY KEY is SQLite's own row number: the store fills it.
  if (keyParts.size() == 1 && types[static_cast<std::size_t>(keyParts[0])] == "INTEGER") {
    fields[static_cast<std::size_t>(keyParts[0])].AutoIncrement = true;
  }
  return fields;
}

std::vector<IndexDef> Database::Indexes(std::string_view table) const {
  sqlite3* db = Live().db;
  std::vector<IndexDef> indexes;
  Statement list = Prepare(db, "PRAGMA index_list(" + QuoteName(table) + ")");
  while (Step(db, list.get())) {
    IndexDef index;
    index.Name = Column(list.get(), 1).AsText();
    index.Table = std::string(table);
    index.Unique = sqlite3_column_int(list.get(), 2) != 0;
    indexes.push_back(index);
  }
  for (IndexDef& index : indexes) {
    Statement info = Prepare(db, "PRAGMA index_info(" + QuoteName(index.Name) + ")");
    while (Step(db, info.get())) index.Fields.push_back(Column(info.get(), 2).AsText());
  }
  return indexes;
}

bool Database::IsIntact() const {
  try {
    sqlite3* db = Live().db;
    Statement statement = Prepare(db, "PRAGMA integrity_check");
    return Step(db, statement.get()) && Column(statement.get(), 0).AsText() == "ok";
  } catch (const StoreError&) {
    return false;
  }
}

bool Database::AcceptsWrites() {
  sqlite3* db = Live().db;
  if (sqlite3_db_readonly(db, "main") == 1) return false;
  if (sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr) != SQLITE_OK) return true;
  // A change of the schema makes SQLite write its journal beside the file,
  // as the first change of a save does; the rollback leaves no trace of it.
  const int rc =
      sqlite3_exec(db, "CREATE TABLE \"__write probe\" (x)", nullptr, nullptr, nullptr);
  if (!sqlite3_get_autocommit(db)) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
  const int primary = rc & 0xFF;
  return rc == SQLITE_OK || primary == SQLITE_BUSY || primary == SQLITE_LOCKED;
}

// ------------------------------------------------------------- Transaction

Transaction::Transaction(Database& database) : database_(database) {
  database_.Execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  if (!open_ || !database_.IsOpen()) return;
  sqlite3* db = database_.connection_->db;
  // A failed write may have ended the transaction already.
  if (!sqlite3_get_autocommit(db)) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  sqlite3* db = database_.Live().db;
  open_ = false;
  const int rc = sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  if (rc == SQLITE_OK) return;
  // Read the failure before the rollback replaces it.
  try {
    Fail(db, rc, "COMMIT");
  } catch (...) {
    if (!sqlite3_get_autocommit(db)) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
}

std::vector<FieldInfo> Database::TableFieldsOf(std::string_view source,
                                              std::string_view table) const {
  if (table.empty()) return {};
  try {
    return Fields(table);
  } catch (const StoreError&) {
    // A query's FROM may name what is no table of the file (a subquery, a
    // view); its columns are then of no known type. A table name must exist.
    if (!IsSelect(source)) throw;
    return {};
  }
}

namespace {

// The fields of a statement's columns from `first` on, typed as the table
// declares them. A column the table does not have (a computed one) is of no
// known type, and `allKnown` is then false.
std::vector<FieldInfo> ColumnFields(sqlite3_stmt* statement, int first,
                                    const std::vector<FieldInfo>& tableFields, bool& allKnown) {
  std::vector<FieldInfo> fields;
  allKnown = true;
  const int columns = sqlite3_column_count(statement);
  for (int c = first; c < columns; ++c) {
    std::string name = sqlite3_column_name(statement, c);
    auto known = std::find_if(tableFields.begin(), tableFields.end(),
                              [&](const FieldInfo& f) { return SameName(f.Name, name); });
    if (known != tableFields.end()) {
      FieldInfo field = *known;
      field.Name = name;
      fields.push_back(field);
    } else {
      fields.push_back(FieldInfo{name, FieldType::Any, 0, false});
      allKnown = false;
    }
  }
  return fields;
}

}  // namespace

Recordset Database::OpenRecordset(std::string_view source) {
  Connection& connection = Live();
  auto state = std::make_unique<Recordset::State>();
  state->connection = connection_;

  std::string sql;
  std::string table;
  bool updatable = false;
  if (IsSelect(source)) {
    QueryShape shape = ShapeOf(source);
    table = shape.table;
    updatable = shape.updatable && !table.empty();
    if (updatable) {
      // The row id rides along as the first column so that edits find their row.
      std::string_view rest = source.substr(source.find_first_not_of(" \t\r\n") + 6);
      sql = "SELECT rowid AS \"__key\"," + std::string(rest);
      sqlite3_stmt* probe = nullptr;
      if (sqlite3_prepare_v2(connection.db, sql.c_str(), -1, &probe, nullptr) != SQLITE_OK) {
        updatable = false;
      }
      sqlite3_finalize(probe);
    }
    if (!updatable) sql = std::string(source);
  } else {
    table = Unquote(std::string(source));
    updatable = true;
    sql = "SELECT rowid AS \"__key\", * FROM " + QuoteName(table) + " ORDER BY rowid";
  }

  Statement statement = Prepare(connection.db, sql);
  const int offset = updatable ? 1 : 0;
  const int columns = sqlite3_column_count(statement.get());
  bool allKnown = true;
  state->fields = ColumnFields(statement.get(), offset, TableFieldsOf(source, table), allKnown);
  updatable = updatable && allKnown;  // a computed column cannot be written back
  while (Step(connection.db, statement.get())) {
    Recordset::State::Row row;
    if (offset == 1) row.key = sqlite3_column_int64(statement.get(), 0);
    row.values.reserve(state->fields.size());
    for (int c = offset; c < columns; ++c) {
      row.values.push_back(FromStorage(state->fields[static_cast<std::size_t>(c - offset)],
                                       Column(statement.get(), c)));
    }
    state->rows.push_back(std::move(row));
  }
  state->table = updatable ? table : "";
  state->position = state->rows.empty() ? -1 : 0;
  return Recordset(std::move(state));
}

// --------------------------------------------------------------- Recordset

namespace {

[[noreturn]] void NoCurrent() {
  throw StoreError(errors::NoCurrentRecord, "No current record.");
}

[[noreturn]] void NoField(std::string_view name) {
  throw StoreError(errors::FieldNotFound,
                   "Item not found in this collection: '" + std::string(name) + "'.");
}

}  // namespace

Recordset::Recordset() = default;
Recordset::Recordset(std::unique_ptr<State> state) : state_(std::move(state)) {}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

void Recordset::Close() { state_.reset(); }

static Recordset::State& Open(const std::unique_ptr<Recordset::State>& state) {
  if (!state) throw StoreError(errors::SyntaxError, "Object invalid or no longer set.");
  return *state;
}

bool Recordset::Eof() const {
  const State& s = Open(state_);
  return s.rows.empty() || s.position >= static_cast<long>(s.rows.size());
}

bool Recordset::Bof() const {
  const State& s = Open(state_);
  return s.rows.empty() || s.position < 0;
}

void Recordset::MoveFirst() {
  State& s = Open(state_);
  s.mode = State::Mode::None;
  for (long i = 0; i < static_cast<long>(s.rows.size()); ++i) {
    if (!s.rows[static_cast<std::size_t>(i)].deleted) {
      s.position = i;
      return;
    }
  }
  NoCurrent();
}

void Recordset::MoveLast() {
  State& s = Open(state_);
  s.mode = State::Mode::None;
  for (long i = static_cast<long>(s.rows.size()) - 1; i >= 0; --i) {
    if (!s.rows[static_cast<std::size_t>(i)].deleted) {
      s.position = i;
      return;
    }
  }
  NoCurrent();
}

void Recordset::MoveNext() {
  State& s = Open(state_);
  if (Eof()) NoCurrent();
  s.mode = State::Mode::None;
  do {
    ++s.position;
  } while (s.OnRow() && s.rows[static_cast<std::size_t>(s.position)].deleted);
}

void Recordset::MovePrevious() {
  State& s = Open(state_);
  if (Bof()) NoCurrent();
  s.mode = State::Mode::None;
  do {
    --s.position;
  } while (s.OnRow() && s.rows[static_cast<std::size_t>(s.position)].deleted);
}

long Recordset::RecordCount() const {
  const State& s = Open(state_);
  return static_cast<long>(std::count_if(s.rows.begin(), s.rows.end(),
                                         [](const State::Row& r) { return !r.deleted; }));
}

static void MustBeUpdatable(const Recordset::State& s) {
  if (s.table.empty()) {
    throw StoreError(errors::ReadOnlyRecordset, "Cannot update. Database or object is read-only.");
  }
}

void Recordset::AddNew() {
  State& s = Open(state_);
  MustBeUpdatable(s);
  s.mode = State::Mode::AddNew;
  s.positionBeforeAdd = s.position;
  s.buffer.assign(s.fields.size(), Value());
  s.dirty.assign(s.fields.size(), false);
}

void Recordset::Edit() {
  State& s = Open(state_);
  MustBeUpdatable(s);
  if (!s.OnRow()) NoCurrent();
  const State::Row& row = s.rows[static_cast<std::size_t>(s.position)];
  if (row.deleted) throw StoreError(errors::RecordDeleted, "Record is deleted.");
  s.mode = State::Mode::Edit;
  s.buffer = row.values;
  s.dirty.assign(s.fields.size(), false);
}

void Recordset::CancelUpdate() {
  State& s = Open(state_);
  if (s.mode == State::Mode::AddNew) s.position = s.positionBeforeAdd;
  s.mode = State::Mode::None;
}

// Reads one row afresh, as the store now holds it.
static std::vector<Value> ReadRow(const Recordset::State& s, std::int64_t key) {
  std::string columns;
  for (const FieldInfo& field : s.fields) {
    if (!columns.empty()) columns += ", ";
    columns += QuoteName(field.Name);
  }
  Statement statement =
      Prepare(s.Db(), "SELECT " + columns + " FROM " + QuoteName(s.table) + " WHERE rowid = ?");
  sqlite3_bind_int64(statement.get(), 1, key);
  std::vector<Value> values;
  if (Step(s.Db(), statement.get())) {
    for (std::size_t c = 0; c < s.fields.size(); ++c) {
      values.push_back(FromStorage(s.fields[c], Column(statement.get(), static_cast<int>(c))));
    }
  }
  return values;
}

void Recordset::Update() {
  State& s = Open(state_);
  if (s.mode == State::Mode::None) {
    throw StoreError(errors::UpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit.");
  }
  std::vector<std::size_t> changed;
  for (std::size_t c = 0; c < s.fields.size(); ++c) {
    if (s.dirty[c]) changed.push_back(c);
  }
  std::int64_t key = 0;
  if (s.mode == State::Mode::AddNew) {
    std::string sql = "INSERT INTO " + QuoteName(s.table);
    if (changed.empty()) {
      sql += " DEFAULT VALUES";
    } else {
      std::string names, marks;
      for (std::size_t c : changed) {
        names += (names.empty() ? "" : ", ") + QuoteName(s.fields[c].Name);
        marks += marks.empty() ? "?" : ", ?";
      }
      sql += " (" + names + ") VALUES (" + marks + ")";
    }
    Statement statement = Prepare(s.Db(), sql);
    for (std::size_t i = 0; i < changed.size(); ++i) {
      Bind(s.Db(), statement.get(), static_cast<int>(i + 1), s.buffer[changed[i]]);
    }
    Step(s.Db(), statement.get());
    key = sqlite3_last_insert_rowid(s.Db());
    s.rows.push_back(State::Row{key, ReadRow(s, key), false});
    s.position = s.positionBeforeAdd;
    // An added row behind an empty recordset becomes its current row.
    if (s.position < 0 && s.rows.size() == 1) s.position = 0;
  } else {
    State::Row& row = s.rows[static_cast<std::size_t>(s.position)];
    key = row.key;
    if (!changed.empty()) {
      std::string sql = "UPDATE " + QuoteName(s.table) + " SET ";
      for (std::size_t i = 0; i < changed.size(); ++i) {
        sql += (i ? ", " : "") + QuoteName(s.fields[changed[i]].Name) + " = ?";
      }
      Statement statement = Prepare(s.Db(), sql + " WHERE rowid = ?");
      for (std::size_t i = 0; i < changed.size(); ++i) {
        Bind(s.Db(), statement.get(), static_cast<int>(i + 1), s.buffer[changed[i]]);
      }
      sqlite3_bind_int64(statement.get(), static_cast<int>(changed.size() + 1), key);
      Step(s.Db(), statement.get());
    }
    row.values = ReadRow(s, key);
  }
  s.mode = State::Mode::None;
  s.lastModified = key;
}

void Recordset::Delete() {
  State& s = Open(state_);
  MustBeUpdatable(s);
  if (!s.OnRow()) NoCurrent();
  State::Row& row = s.rows[static_cast<std::size_t>(s.position)];
  if (row.deleted) throw StoreError(errors::RecordDeleted, "Record is deleted.");
  Statement statement = Prepare(s.Db(), "DELETE FROM " + QuoteName(s.table) + " WHERE rowid = ?");
  sqlite3_bind_int64(statement.get(), 1, row.key);
  Step(s.Db(), statement.get());
  row.deleted = true;
  s.mode = State::Mode::None;
}

std::int64_t Recordset::LastModified() const {
  const State& s = Open(state_);
  if (!s.lastModified) NoCurrent();
  return *s.lastModified;
}

void Recordset::Bookmark(std::int64_t key) {
  State& s = Open(state_);
  for (std::size_t i = 0; i < s.rows.size(); ++i) {
    if (s.rows[i].key == key && !s.rows[i].deleted) {
      s.position = static_cast<long>(i);
      s.mode = State::Mode::None;
      return;
    }
  }
  throw StoreError(errors::NoCurrentRecord, "Not a valid bookmark.");
}

int Recordset::FieldCount() const { return static_cast<int>(Open(state_).fields.size()); }

const FieldInfo& Recordset::Field(int position) const {
  const State& s = Open(state_);
  if (position < 0 || position >= static_cast<int>(s.fields.size())) {
    NoField(std::to_string(position));
  }
  return s.fields[static_cast<std::size_t>(position)];
}

int Recordset::PositionOf(std::string_view name) const {
  const State& s = Open(state_);
  for (std::size_t i = 0; i < s.fields.size(); ++i) {
    if (SameName(s.fields[i].Name, name)) return static_cast<int>(i);
  }
  return -1;
}

bool Recordset::HasField(std::string_view name) const { return PositionOf(name) >= 0; }

Value Recordset::Get(std::string_view name) const {
  int position = PositionOf(name);
  if (position < 0) NoField(name);
  return Get(position);
}

Value Recordset::Get(int position) const {
  const State& s = Open(state_);
  Field(position);
  auto index = static_cast<std::size_t>(position);
  if (s.mode != State::Mode::None) return s.buffer[index];
  if (!s.OnRow()) NoCurrent();
  const State::Row& row = s.rows[static_cast<std::size_t>(s.position)];
  if (row.deleted) throw StoreError(errors::RecordDeleted, "Record is deleted.");
  return row.values[index];
}

void Recordset::Set(std::string_view name, const Value& value) {
  int position = PositionOf(name);
  if (position < 0) NoField(name);
  Set(position, value);
}

void Recordset::Set(int position, const Value& value) {
  State& s = Open(state_);
  const FieldInfo& field = Field(position);
  if (s.mode == State::Mode::None) {
    throw StoreError(errors::UpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit.");
  }
  if (field.AutoIncrement) {
    throw StoreError(errors::FieldNotUpdatable, "Field '" + field.Name + "' cannot be updated.");
  }
  auto index = static_cast<std::size_t>(position);
  s.buffer[index] = CoerceTo(field.Type, field.Size, value, field.Name);
  s.dirty[index] = true;
}

// ----------------------------------------------------------- ForwardCursor

struct ForwardCursor::State {
  std::shared_ptr<Database::Connection> connection;
  Statement statement;
  std::vector<FieldInfo> fields;
  bool onRow = false;

  // Steps onto the next row. A statement that has run to its end no longer
  // reads the file: SQLite ends its read by itself.
  void Step() { onRow = store::Step(connection->db, statement.get()); }
};

ForwardCursor Database::OpenForwardCursor(std::string_view source) {
  Connection& connection = Live();
  auto state = std::make_unique<ForwardCursor::State>();
  state->connection = connection_;
  std::string table;
  std::string sql;
  if (IsSelect(source)) {
    table = ShapeOf(source).table;
    sql = std::string(source);
  } else {
    table = Unquote(std::string(source));
    sql = "SELECT * FROM " + QuoteName(table) + " ORDER BY rowid";
  }
  state->statement = Prepare(connection.db, sql);
  bool allKnown = true;
  state->fields = ColumnFields(state->statement.get(), 0, TableFieldsOf(source, table), allKnown);
  state->Step();
  return ForwardCursor(std::move(state));
}

ForwardCursor::ForwardCursor() = default;
ForwardCursor::ForwardCursor(std::unique_ptr<State> state) : state_(std::move(state)) {}
ForwardCursor::ForwardCursor(ForwardCursor&&) noexcept = default;
ForwardCursor& ForwardCursor::operator=(ForwardCursor&&) noexcept = default;
ForwardCursor::~ForwardCursor() = default;

void ForwardCursor::Close() { state_.reset(); }

static ForwardCursor::State& Open(const std::unique_ptr<ForwardCursor::State>& state) {
  if (!state) throw StoreError(errors::SyntaxError, "Object invalid or no longer set.");
  return *state;
}

bool ForwardCursor::Eof() const { return !Open(state_).onRow; }

void ForwardCursor::MoveNext() {
  State& s = Open(state_);
  if (!s.onRow) NoCurrent();
  s.Step();
}

int ForwardCursor::FieldCount() const { return static_cast<int>(Open(state_).fields.size()); }

const FieldInfo& ForwardCursor::Field(int position) const {
  const State& s = Open(state_);
  if (position < 0 || position >= static_cast<int>(s.fields.size())) {
    NoField(std::to_string(position));
  }
  return s.fields[static_cast<std::size_t>(position)];
}

bool ForwardCursor::HasField(std::string_view name) const {
  const State& s = Open(state_);
  return std::any_of(s.fields.begin(), s.fields.end(),
                     [&](const FieldInfo& f) { return SameName(f.Name, name); });
}

Value ForwardCursor::Get(std::string_view name) const {
  const State& s = Open(state_);
  for (std::size_t i = 0; i < s.fields.size(); ++i) {
    if (SameName(s.fields[i].Name, name)) return Get(static_cast<int>(i));
  }
  NoField(name);
}

Value ForwardCursor::Get(int position) const {
  const State& s = Open(state_);
  const FieldInfo& field = Field(position);
  if (!s.onRow) NoCurrent();
  return FromStorage(field, Column(s.statement.get(), position));
}

}  // namespace parvenna::store
